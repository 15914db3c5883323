#include "Check.h"

#include <utility>

#include "check/rules.h"

namespace plddb::check {
namespace {

struct Loaded {
  LoadResult result;
  Outline outline;
};

Loaded Load(const Source& source) {
  Loaded loaded;
  loaded.result = ParseDescriptions(source.text, source.file, &loaded.outline);
  return loaded;
}

Finding MakeFinding(CodeId id, Place place, std::string text) {
  const Code& code = CodeOf(id);
  return {std::move(place), code.name, code.severity, std::move(text), {}};
}

}  // namespace

std::vector<Finding> Check(const std::vector<Description>& descriptions) {
  const Records records(descriptions);
  Findings findings(descriptions);
  for (const auto check : {CheckIdentifiers, CheckShadowedIds, CheckInstructions, CheckNamesAndTexts, CheckShadowedNames,
                           CheckPackages, CheckFuseCounts, CheckBackups, CheckLists, CheckControlBits, CheckEbrBlocks}) {
    check(records, findings);
  }
  return findings.Take();
}

std::vector<Finding> CheckTexts(const std::vector<Source>& sources) {
  std::vector<Loaded> loaded;
  std::vector<Description> descriptions;
  std::vector<Finding> findings;
  loaded.reserve(sources.size());  // what descriptions borrow keeps its place
  for (const Source& source : sources) {
    if (!source.failure.empty()) {
      findings.push_back(MakeFinding(CodeId::kUnreadable, {source.file, 1, 1}, "cannot read the file: " + source.failure));
      continue;
    }
    const Loaded& last = loaded.emplace_back(Load(source));
    for (const Fault& fault : last.result.faults) {
      findings.push_back(MakeFinding(CodeId::kLoad, {fault.file, fault.line, fault.column}, fault.text));
    }
    if (last.result.database != nullptr) {
      descriptions.push_back({source.file, last.result.database.get(), &last.outline, source.text});
    }
  }
  for (Finding& finding : Check(descriptions)) findings.push_back(std::move(finding));
  return findings;
}

}  // namespace plddb::check
