#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "check/rules.h"
#include "descriptions/TextForms.h"
#include "device/identifiers.h"

namespace plddb::check {
namespace {

using internal::AccessMode;

/// An identifier of a device, by the access mode that compares it. DUAL compares these two, more loosely on purpose.
struct Identifier {
  AccessMode mode;
  const char* attribute;
  const char* name;
  unsigned int (DeviceInfo::*id)() const;
};

constexpr Identifier kIdentifiers[] = {
    {AccessMode::kJtag, "jtagDeviceID", "IDCODE", &DeviceInfo::GetjtagDeviceID},
    {AccessMode::kIsp, "ispDeviceID", "ISP identifier", &DeviceInfo::GetispDeviceID},
};

/// What a device answers to: all ids that agree with `id` in the bits of `mask`.
struct Answer {
  unsigned int id;
  unsigned int mask;
  const DescribedDevice* device;
};

using Answers = std::vector<Answer>;  // in the order of the lookups

Answers AnswersOf(const Records& records, const Identifier& identifier) {
  Answers answers;
  for (const DescribedDevice& device : records.Devices()) {
    const unsigned int id = (device.device->*identifier.id)();
    const unsigned int mask = device.device->GetDeviceIDScanMask();
    if (internal::AnswersTo(*device.device, identifier.mode, id)) answers.push_back({id & mask, mask, &device});
  }
  return answers;
}

/// For each bit of an identifier the answers that take it as 0, that take it as 1, and that do not count it: a bit for each
/// answer, so that 64 answers are compared at once. On purpose no tree, although this grows with the square of the group:
/// 60,000 devices with as many masks take a second, and a tree that branches at each bit took four.
class AnswerSets {
 public:
  explicit AnswerSets(const Answers& answers) : words_(answers.size() / kWordBits + 1), sets_(kSets * kIdBits * words_) {
    for (std::size_t i = 0; i < answers.size(); ++i) Add(answers[i], i);
  }

  /// The first answer before `end` that shares ids with `answer`; with `all`, the first that answers to all of its ids.
  /// `end` when there is none.
  std::size_t First(const Answer& answer, std::size_t end, bool all) const {
    for (std::size_t word = 0; word * kWordBits < end; ++word) {
      const Word rivals = Rivals(answer, word, all);
      if (rivals == 0) continue;
      const std::size_t first = word * kWordBits + LowestBit(rivals);
      return first < end ? first : end;
    }
    return end;
  }

 private:
  using Word = std::uint64_t;
  enum Set : std::size_t { kTakesZero, kTakesOne, kDoesNotCount, kSets };
  static constexpr std::size_t kWordBits = 64;
  static constexpr unsigned int kIdBits = 32;

  static std::size_t LowestBit(Word word) {
    std::size_t bit = 0;
    while ((word >> bit & 1) == 0) ++bit;
    return bit;
  }

  std::size_t IndexOf(Set set, unsigned int bit, std::size_t word) const { return (set * kIdBits + bit) * words_ + word; }

  void Add(const Answer& answer, std::size_t i) {
    for (unsigned int bit = 0; bit < kIdBits; ++bit) {
      const bool counts = (answer.mask >> bit & 1) != 0;
      const bool isOne = (answer.id >> bit & 1) != 0;
      const auto put = [&](Set set) { sets_[IndexOf(set, bit, i / kWordBits)] |= Word{1} << i % kWordBits; };
      if (!counts) put(kDoesNotCount);
      if (!counts || isOne) put(kTakesOne);
      if (!counts || !isOne) put(kTakesZero);
    }
  }

  Word Rivals(const Answer& answer, std::size_t word, bool all) const {
    Word rivals = ~Word{0};
    for (unsigned int bit = 0; bit < kIdBits && rivals != 0; ++bit) {
      if ((answer.mask >> bit & 1) != 0) {
        rivals &= sets_[IndexOf((answer.id >> bit & 1) != 0 ? kTakesOne : kTakesZero, bit, word)];
      } else if (all) {
        rivals &= sets_[IndexOf(kDoesNotCount, bit, word)];
      }
    }
    return rivals;
  }

  std::size_t words_;  // of each set
  std::vector<Word> sets_;
};

std::string TextOf(const Records& records, const Answer& answer, const Answer& earlier, bool isShadowed,
                   const Identifier& identifier) {
  const std::string name = records.NameFor(*answer.device, *earlier.device) + ", which comes first";
  if (isShadowed) return std::string("the ") + identifier.name + " finds " + name + " and answers to all ids of this device";
  return std::string("the ") + identifier.name + " " + Hex(earlier.id | answer.id, 8) + " finds " + name;
}

/// The answers that may share ids: those that agree in the bits which all masks count. Most masks are alike, so that most
/// groups have one answer.
std::vector<Answers> Groups(const Answers& answers) {
  unsigned int common = ~0U;
  for (const Answer& answer : answers) common &= answer.mask;
  std::unordered_map<unsigned int, std::size_t> positions;
  std::vector<Answers> groups;
  for (const Answer& answer : answers) {
    const auto [position, isNew] = positions.try_emplace(answer.id & common, groups.size());
    if (isNew) groups.emplace_back();
    groups[position->second].push_back(answer);
  }
  return groups;
}

/// A device that takes all ids of a later one is named before one that takes some of them.
void CheckGroup(const Records& records, const Identifier& identifier, const Answers& answers, Findings& findings) {
  const AnswerSets sets(answers);
  for (std::size_t i = 0; i < answers.size(); ++i) {
    const std::size_t any = sets.First(answers[i], i, false);
    if (any == i) continue;
    const std::size_t whole = sets.First(answers[i], i, true);
    const bool isShadowed = whole != i;
    const Answer& earlier = answers[isShadowed ? whole : any];
    findings.Add(*answers[i].device, identifier.attribute, isShadowed ? CodeId::kIdShadowed : CodeId::kIdShared,
                 TextOf(records, answers[i], earlier, isShadowed, identifier), *earlier.device);
  }
}

}  // namespace

void CheckShadowedIds(const Records& records, Findings& findings) {
  for (const Identifier& identifier : kIdentifiers) {
    for (const Answers& group : Groups(AnswersOf(records, identifier))) {
      if (group.size() > 1) CheckGroup(records, identifier, group, findings);
    }
  }
}

}  // namespace plddb::check
