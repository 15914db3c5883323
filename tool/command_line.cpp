#include "command_line.h"

#include <CLI/CLI.hpp>
#include <string_view>

#include "device_text.h"
#include "suggestions.h"

namespace tool {
namespace {

std::vector<const CLI::App*> SubcommandsOf(const CLI::App& program) {
  return program.get_subcommands([](const CLI::App*) { return true; });
}

const CLI::App& FindApp(const CLI::App& program, const std::string& name) {
  std::vector<std::string> names;
  for (const CLI::App* const subcommand : SubcommandsOf(program)) {
    if (subcommand->get_name() == name) return *subcommand;
    names.push_back(subcommand->get_name());
  }
  const std::vector<std::string_view> known(names.begin(), names.end());
  throw WrongUsage("no subcommand is named " + Printable(name) + DidYouMean(Suggestions(name, known)));
}

OptionShape ShapeOf(const CLI::Option& option) {
  OptionShape shape = {
      option.get_name(), {}, option.get_type_name(), option.get_description(), option.get_items_expected_max()};
  for (const std::string& name : option.get_lnames()) shape.names.push_back("--" + name);
  for (const std::string& name : option.get_snames()) shape.names.push_back("-" + name);
  return shape;
}

SubcommandShape ShapeOf(const CLI::App& app) {
  SubcommandShape shape = {app.get_name(), app.get_description(), {}};
  for (const CLI::Option* const option : app.get_options()) shape.options.push_back(ShapeOf(*option));
  return shape;
}

}  // namespace

Option Option::Type(const std::string& shown) const {
  option_->type_name(shown);
  return *this;
}

Option Option::OneOf(const std::vector<std::string>& values) const {
  option_->check(CLI::IsMember(values).description(""));
  return *this;
}

Option Option::Check(const std::function<std::string(const std::string& value)>& complaint) const {
  option_->check(CLI::Validator([complaint](const std::string& value) { return complaint(value); }, ""));
  return *this;
}

Option Option::NotEmpty() const {
  option_->check(CLI::Validator([](const std::string& text) { return text.empty() ? "must not be empty" : ""; }, ""));
  return *this;
}

Option Option::Required() const {
  option_->required();
  return *this;
}

Option Option::OneValueEach() const {
  option_->allow_extra_args(false);
  return *this;
}

Option Option::ValueMayBeMissing() const { return Option(option_->expected(0, 1)); }

Option Option::Needs(Option other) const {
  option_->needs(other.option_);
  return *this;
}

Option Option::Excludes(Option other) const {
  option_->excludes(other.option_);
  return *this;
}

bool Option::IsGiven() const { return option_->count() > 0; }

Option Subcommand::Add(const std::string& name, std::string& value, const std::string& help) const {
  return Option(app_->add_option(name, value, help));
}

Option Subcommand::Add(const std::string& name, std::vector<std::string>& values, const std::string& help) const {
  return Option(app_->add_option(name, values, help));
}

Option Subcommand::AddFlag(const std::string& name, bool& value, const std::string& help) const {
  return Option(app_->add_flag(name, value, help));
}

Option Subcommand::Get(const std::string& name) const { return Option(app_->get_option(name)); }

void Subcommand::Footer(const std::string& text) const { app_->footer(text); }

std::string Subcommand::HelpOfProgram() const {
  // App::help() would answer for the subcommand that was given, which is this one.
  const CLI::App& program = *app_->get_parent();
  return program.get_formatter()->make_help(&program, program.get_name(), CLI::AppFormatMode::Normal);
}

std::string Subcommand::HelpOf(const std::string& name) const {
  const CLI::App& program = *app_->get_parent();
  return FindApp(program, name).help(program.get_name());
}

Program::Program(const std::string& name, const std::string& description, const std::string& version)
    : app_(std::make_unique<CLI::App>(description, name)) {
  app_->set_version_flag("--version", version);
  app_->require_subcommand(0, 1);  // what follows is an argument, even if it is called like a subcommand
}

Program::~Program() = default;

void Program::Add(const std::string& name, const std::string& description, Run (*add)(Subcommand subcommand)) {
  CLI::App* const app = app_->add_subcommand(name, description);
  runs_.emplace_back(app, add(Subcommand(app)));
}

std::optional<ExitCode> Program::Parse(const std::vector<std::string>& words) {
  if (!words.empty() && words.front().substr(0, 1) != "-") FindApp(*app_, words.front());  // for its message
  try {
    app_->parse(std::vector<std::string>(words.rbegin(), words.rend()));  // the parser takes them last first
  } catch (const CLI::Success& answer) {                                  // --help and --version
    app_->exit(answer);
    return ExitCode::kFound;
  } catch (const CLI::ParseError& error) {
    throw WrongUsage(error.what());
  }
  return std::nullopt;
}

ExitCode Program::RunSubcommand() const {
  for (const auto& [app, run] : runs_) {
    if (app->parsed()) return run();
  }
  throw WrongUsage("a subcommand is required");
}

SubcommandShape Program::Shape() const { return ShapeOf(*app_); }

std::vector<SubcommandShape> Program::Subcommands() const {
  std::vector<SubcommandShape> shapes;
  for (const CLI::App* const subcommand : SubcommandsOf(*app_)) shapes.push_back(ShapeOf(*subcommand));
  return shapes;
}

SubcommandShape Program::FindSubcommand(const std::string& name) const { return ShapeOf(FindApp(*app_, name)); }

}  // namespace tool
