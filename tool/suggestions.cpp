#include "suggestions.h"

#include <algorithm>

#include "NearNames.h"
#include "device_text.h"
#include "standard_streams.h"

namespace tool {

std::vector<std::string> Suggestions(const std::string& wanted, const std::vector<std::string_view>& known) {
  const auto near = plddb::NearNames(wanted, known, 5);
  std::vector<std::string> suggestions(near.begin(), near.end());
  suggestions.erase(std::remove(suggestions.begin(), suggestions.end(), wanted), suggestions.end());
  return suggestions;
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

}  // namespace tool
