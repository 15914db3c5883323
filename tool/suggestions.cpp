#include "suggestions.h"

#include "Find.h"
#include "device_text.h"
#include "standard_streams.h"

namespace tool {

std::vector<std::string> Suggestions(const std::string& wanted, const std::vector<std::string_view>& known) {
  return plddb::find::Near(wanted, known);
}

std::string DidYouMean(const std::vector<std::string>& suggestions) {
  std::string text;
  for (const std::string& suggestion : suggestions) text += (text.empty() ? "; did you mean " : ", ") + Printable(suggestion);
  return text.empty() ? "" : text + "?";
}

ExitCode ReportNothing(const std::vector<std::string>& suggestions, const std::string& message) {
  WriteMessage("plddb: " + message + DidYouMean(suggestions) + "\n");
  return ExitCode::kNotFound;
}

ExitCode ReportSeveral(std::size_t count) {
  WriteMessage("plddb: " + std::to_string(count) + " devices match, and --unique wants one\n");
  return ExitCode::kNotFound;
}

}  // namespace tool
