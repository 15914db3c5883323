#include "command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <string_view>

#include "device_text.h"
#include "standard_streams.h"
#include "suggestions.h"
#include "text_table.h"

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

// --- Help -------------------------------------------------------------------------------------------------------------------

/// Where the lines that continue `line` start: at the text in its second column, or where the line itself does.
std::size_t Indent(const std::string& line) {
  const std::size_t start = std::min(line.find_first_not_of(' '), line.size());
  const std::size_t gap = line.find("  ", start);
  const std::size_t second = gap == line.npos ? gap : line.find_first_not_of(' ', gap);
  return second == line.npos || second > kLineWidth / 2 ? start : second;
}

/// `line` in lines of kLineWidth columns.
std::string WrappedLine(const std::string& line) {
  if (line.size() <= kLineWidth) return line + "\n";
  const std::size_t indent = Indent(line);
  std::string wrapped;
  for (const std::string& part : Wrapped(line.substr(indent), kLineWidth - indent)) {
    wrapped += (wrapped.empty() ? line.substr(0, indent) : std::string(indent, ' ')) + part + "\n";
  }
  return wrapped;
}

template <typename Visit>
void ForEachLine(const std::string& text, Visit visit) {
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find('\n', start), text.size());
    visit(text.substr(start, end - start));
    start = end + 1;
  }
}

/// Each paragraph of `text` that has a longer line than kLineWidth, wrapped anew; the others as they are.
std::string WrappedParagraphs(const std::string& text) {
  std::string wrapped;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find("\n\n", start), text.size());
    std::string paragraph = text.substr(start, end - start);
    bool isLong = false;
    ForEachLine(paragraph, [&](const std::string& line) { isLong = isLong || line.size() > kLineWidth; });
    std::replace_if(
        paragraph.begin(), paragraph.end(), [&](char c) { return isLong && c == '\n'; }, ' ');
    wrapped += (wrapped.empty() ? "" : "\n") + (isLong ? WrappedLine(paragraph) : paragraph + "\n");
    start = end + 2;
  }
  return wrapped;
}

std::string HelpText(const CLI::App& app, const std::string& program) {
  std::string help;
  ForEachLine(app.help(program), [&](const std::string& line) { help += WrappedLine(line); });
  return help;
}

constexpr const char* kExample = "Example: plddb identify 0x59604093\n";

std::string HelpOfProgramItself(const CLI::App& program) {
  // App::help() would answer for the subcommand that was given.
  std::string help;
  ForEachLine(program.get_formatter()->make_help(&program, program.get_name(), CLI::AppFormatMode::Normal),
              [&](const std::string& line) { help += WrappedLine(line); });
  return help + kExample;
}

// --- Words that make no sense -----------------------------------------------------------------------------------------------

/// The option that `word` is written as: "--db" of "--db=FILE"; empty for other words.
std::string OptionIn(const std::string& word) {
  return word.size() > 2 && word.compare(0, 2, "--") == 0 ? word.substr(0, word.find('=')) : "";
}

std::vector<std::string> LongOptions(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* const option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  }
  return names;
}

/// Throws WrongUsage for an option that `app` does not have, with what may have been meant.
void RefuseUnknownOptions(const CLI::App& app, const std::vector<std::string>& words) {
  const std::vector<std::string> known = LongOptions(app);
  for (std::size_t i = 1; i < words.size() && words[i] != "--"; ++i) {
    const std::string option = OptionIn(words[i]);
    if (option.empty() || std::find(known.begin(), known.end(), option) != known.end()) continue;
    throw WrongUsage(app.get_name() + " has no option " + Printable(option) +
                     DidYouMean(Suggestions(option, {known.begin(), known.end()})));
  }
}

/// Throws WrongUsage for options before the subcommand, which belong after it.
void RefuseOptionsInFront(const CLI::App& program, const std::vector<std::string>& words) {
  const std::vector<std::string> known = LongOptions(program);
  if (words.empty() || OptionIn(words.front()).empty()) return;
  if (std::find(known.begin(), known.end(), OptionIn(words.front())) != known.end()) return;
  for (std::size_t i = 1; i < words.size(); ++i) {
    const auto subcommands = SubcommandsOf(program);
    const auto isNamed = [&](const CLI::App* subcommand) { return subcommand->get_name() == words[i]; };
    if (std::none_of(subcommands.begin(), subcommands.end(), isNamed)) continue;
    std::string line = "plddb " + words[i];
    for (std::size_t j = 0; j < words.size(); ++j) line += j == i ? "" : " " + words[j];
    throw WrongUsage("options come after the subcommand: " + Printable(line));
  }
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

void Subcommand::Footer(const std::string& text, const std::vector<std::string>& examples) const {
  std::string footer = WrappedParagraphs(text);
  if (!examples.empty()) footer += (footer.empty() ? "Examples:\n" : "\nExamples:\n");
  for (const std::string& example : examples) footer += "  " + example + "\n";
  footer.erase(footer.find_last_not_of('\n') + 1);
  app_->footer(footer);
}

std::string Subcommand::HelpOfProgram() const { return HelpOfProgramItself(*app_->get_parent()); }

std::string Subcommand::HelpOf(const std::string& name) const {
  const CLI::App& program = *app_->get_parent();
  return HelpText(FindApp(program, name), program.get_name());
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
  RefuseOptionsInFront(*app_, words);
  if (!words.empty() && words.front().substr(0, 1) != "-") RefuseUnknownOptions(FindApp(*app_, words.front()), words);
  try {
    app_->parse(std::vector<std::string>(words.rbegin(), words.rend()));  // the parser takes them last first
  } catch (const CLI::CallForHelp&) {
    const auto given = app_->get_subcommands();
    WriteOutput(given.empty() ? HelpOfProgramItself(*app_) : HelpText(*given.front(), app_->get_name()));
    return ExitCode::kFound;
  } catch (const CLI::CallForVersion& version) {
    WriteOutput(std::string(version.what()) + "\n");
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
  throw Failure("plddb: error: a subcommand is required\n\n" + HelpOfProgramItself(*app_));
}

SubcommandShape Program::Shape() const { return ShapeOf(*app_); }

std::vector<SubcommandShape> Program::Subcommands() const {
  std::vector<SubcommandShape> shapes;
  for (const CLI::App* const subcommand : SubcommandsOf(*app_)) shapes.push_back(ShapeOf(*subcommand));
  return shapes;
}

SubcommandShape Program::FindSubcommand(const std::string& name) const { return ShapeOf(FindApp(*app_, name)); }

}  // namespace tool
