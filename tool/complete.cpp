#include "complete.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "Check.h"
#include "Files.h"
#include "databases.h"
#include "device_lookup.h"
#include "device_text.h"
#include "standard_streams.h"

namespace tool {
namespace {

struct Proposal {
  std::string text;
  std::string description;
};

/// A command line up to the cursor.
struct BegunLine {
  std::vector<std::string> databases;  // named so far
  const OptionShape* asked = nullptr;  // whose value is at the cursor; null when there is none
  std::string option;                  // "--db=" where the value follows the '='
  std::string begun;                   // the word at the cursor, up to it
  bool takesOptions = true;            // not after "--"
};

// --- What may be the value of an option -------------------------------------------------------------------------------------

using Names = std::vector<std::string>;

Names Copies(const std::vector<std::string_view>& views) { return Names(views.begin(), views.end()); }

using plddb::find::Key;

/// The texts of several keys.
Names TextsOf(const std::vector<Database>& databases, std::initializer_list<Key> keys) {
  Names names;
  for (const Key key : keys) {
    for (const std::string_view text : plddb::find::TextsOf(ToSearch(databases), key)) names.emplace_back(text);
  }
  return names;
}

/// The options and arguments whose values come from the descriptions, by the names that they have in every subcommand.
constexpr struct {
  std::string_view option;
  Names (*values)(const std::vector<Database>& databases);
} kValues[] = {
    {"TEXT",
     [](const auto& databases) {
       return TextsOf(databases, {Key::kName, Key::kCodeName, Key::kAlias});
     }},
    {"FAMILY", [](const auto& databases) { return Copies(FamilyNames(databases)); }},
    {"--name", [](const auto& databases) { return TextsOf(databases, {Key::kName}); }},
    {"--code-name", [](const auto& databases) { return TextsOf(databases, {Key::kCodeName}); }},
    {"--alias", [](const auto& databases) { return TextsOf(databases, {Key::kAlias}); }},
    {"--full-name", [](const auto& databases) { return TextsOf(databases, {Key::kCodeName}); }},
    {"--family", [](const auto& databases) { return Copies(FamilyNames(databases)); }},
    {"--pon", [](const auto& databases) { return TextsOf(databases, {Key::kPon}); }},
    {"--jdf", [](const auto& databases) { return TextsOf(databases, {Key::kJdf}); }},
    {"--package", [](const auto& databases) { return TextsOf(databases, {Key::kPackage}); }},
    {"--maker", [](const auto& databases) { return Copies(Makers(databases)); }},
};

Names FindingCodes() {
  Names names;
  for (const plddb::check::Code& code : plddb::check::Codes()) names.emplace_back(code.name);
  return names;
}

/// The options and arguments that are files.
constexpr std::string_view kFiles[] = {"--bsdl", "--db", "--into", "--output", "--scan", "FILE"};

bool TakesFile(const OptionShape& option) {
  return std::find(std::begin(kFiles), std::end(kFiles), option.name) != std::end(kFiles);
}

/// "JTAG|ISP|DUAL": the type of an option that has a few values lists them.
Names Choices(const std::string& type) {
  Names choices;
  if (type.find('|') == type.npos) return choices;
  for (std::size_t start = 0; start <= type.size();) {
    const std::size_t end = std::min(type.find('|', start), type.size());
    choices.push_back(type.substr(start, end - start));
    start = end + 1;
  }
  return choices;
}

Names ValuesOf(const OptionShape& option, const std::vector<std::string>& databases) {
  for (const auto& [name, values] : kValues) {
    if (name == option.name) return values(LoadDatabases(databases));
  }
  return option.name == "--allow" ? FindingCodes() : Choices(option.type);
}

// --- Where the cursor is ----------------------------------------------------------------------------------------------------

const OptionShape* FindOption(const SubcommandShape& subcommand, const std::string& name) {
  for (const OptionShape& option : subcommand.options) {
    if (std::find(option.names.begin(), option.names.end(), name) != option.names.end()) return &option;
  }
  return nullptr;
}

/// The argument at `position` of those without an option; the last takes all that follow, if it takes several.
const OptionShape* ArgumentAt(const SubcommandShape& subcommand, std::size_t position) {
  std::vector<const OptionShape*> arguments;
  for (const OptionShape& option : subcommand.options) {
    if (option.names.empty()) arguments.push_back(&option);
  }
  if (position < arguments.size()) return arguments[position];
  return !arguments.empty() && arguments.back()->mostValues > 1 ? arguments.back() : nullptr;
}

/// "--db=FILE" and "--db FILE", also as the shells that cut words at '=' have it, are "--db" and "FILE".
std::vector<std::string> CutAtEquals(const std::vector<std::string>& words) {
  std::vector<std::string> cut;
  for (const std::string& word : words) {
    const std::size_t equals = word.substr(0, 2) == "--" ? word.find('=') : word.npos;
    if (equals != word.npos) {
      cut.insert(cut.end(), {word.substr(0, equals), word.substr(equals + 1)});
    } else if (word != "=" || cut.empty()) {
      cut.push_back(word);
    }
  }
  if (!words.empty() && words.back() == "=") cut.emplace_back();
  return cut;
}

/// The file that a shell understands by `word`.
std::string ExpandHome(const std::string& word) {
  const std::string home = plddb::Environment("HOME");
  return word.substr(0, 2) == "~/" && !home.empty() ? home + word.substr(1) : word;
}

/// `words` are those after the subcommand, at least the one at the cursor.
BegunLine ReadLine(const SubcommandShape& subcommand, const std::vector<std::string>& words) {
  BegunLine line;
  std::size_t arguments = 0;
  const std::vector<std::string> cut = CutAtEquals(words);
  for (std::size_t i = 0; i + 1 < cut.size(); ++i) {
    const OptionShape* const option = line.takesOptions ? FindOption(subcommand, cut[i]) : nullptr;
    if (line.asked != nullptr) {
      if (line.asked->name == "--db") line.databases.push_back(ExpandHome(cut[i]));
      line.asked = nullptr;
    } else if (option != nullptr) {
      line.asked = option->mostValues > 0 ? option : nullptr;
    } else if (cut[i] == "--") {
      line.takesOptions = false;
    } else if (cut[i].substr(0, 1) != "-" || !line.takesOptions) {
      ++arguments;
    }
  }
  line.begun = cut.back();
  const std::size_t equals = words.back().substr(0, 2) == "--" ? words.back().find('=') : std::string::npos;
  if (equals != std::string::npos) line.option = words.back().substr(0, equals + 1);
  line.takesOptions = line.takesOptions && line.asked == nullptr;
  if (line.asked == nullptr) line.asked = ArgumentAt(subcommand, arguments);
  return line;
}

// --- What may come there ----------------------------------------------------------------------------------------------------

std::vector<Proposal> SubcommandNames(const Program& program) {
  std::vector<Proposal> proposals;
  for (const SubcommandShape& subcommand : program.Subcommands()) {
    proposals.push_back({subcommand.name, subcommand.description});
  }
  return proposals;
}

/// The long ones.
std::vector<Proposal> OptionNames(const SubcommandShape& shape) {
  std::vector<Proposal> proposals;
  for (const OptionShape& option : shape.options) {
    for (const std::string& name : option.names) {
      if (name.substr(0, 2) == "--") proposals.push_back({name, option.description});
    }
  }
  return proposals;
}

bool BeginsWith(std::string text, std::string begun) {
  strupr(text);
  strupr(begun);
  return text.compare(0, begun.size(), begun) == 0;
}

/// Those of `proposals` that begin with `begun`, letter case ignored as lookups do: sorted, and each once.
std::string ListOf(const std::vector<Proposal>& proposals, const std::string& before, const std::string& begun) {
  std::string text;
  std::vector<std::string> written;
  for (const auto& [proposal, description] : proposals) {
    if (!BeginsWith(proposal, begun) || Printable(proposal) != proposal) continue;
    written.push_back(before + proposal + (description.empty() ? "" : "\t" + description) + "\n");
  }
  std::sort(written.begin(), written.end());
  written.erase(std::unique(written.begin(), written.end()), written.end());
  for (const std::string& line : written) text += line;
  return text;
}

}  // namespace

ExitCode Complete(const Program& program, const std::vector<std::string>& words) {
  const std::string begun = words.empty() ? "" : words.front();
  if (words.size() < 2) {
    const auto proposals = begun.substr(0, 1) == "-" ? OptionNames(program.Shape()) : SubcommandNames(program);
    WriteOutput(ListOf(proposals, "", begun));
    return ExitCode::kFound;
  }
  const SubcommandShape subcommand = program.FindSubcommand(begun);
  const BegunLine line = ReadLine(subcommand, {words.begin() + 1, words.end()});
  std::vector<Proposal> proposals;
  if (line.takesOptions && line.begun.substr(0, 1) == "-") {
    proposals = OptionNames(subcommand);
  } else if (line.asked != nullptr && line.asked->name == "COMMAND") {
    proposals = SubcommandNames(program);
  } else if (line.asked != nullptr && TakesFile(*line.asked)) {
    return ExitCode::kNotFound;
  } else if (line.asked != nullptr) {
    for (std::string& value : ValuesOf(*line.asked, line.databases)) proposals.push_back({std::move(value), ""});
  }
  WriteOutput(ListOf(proposals, line.option, line.begun));
  return ExitCode::kFound;
}

}  // namespace tool
