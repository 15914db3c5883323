#include "check_identifiers.h"

#include <map>
#include <unordered_map>
#include <vector>

#include "device_text.h"

namespace tool {
namespace {

/// An identifier of a device, by the access mode that compares it. DUAL compares these two, more loosely on purpose.
struct Kind {
  const char* attribute;
  const char* what;
  unsigned int (DeviceInfo::*id)() const;
};

constexpr Kind kKinds[] = {
    {"jtagDeviceID", "IDCODE", &DeviceInfo::GetjtagDeviceID},
    {"ispDeviceID", "ISP identifier", &DeviceInfo::GetispDeviceID},
};

/// What a device answers to: all ids that agree with `id` in the bits of `mask`.
struct Answer {
  unsigned int id;
  unsigned int mask;
  const DescribedDevice* device;
};

using Answers = std::vector<Answer>;  // in the order of the lookups

/// Whether all ids of a device with mask `later` are also ids of one with mask `earlier`, when they share some.
bool HidesAll(unsigned int earlier, unsigned int later) { return (earlier & ~later) == 0; }

/// The earlier device to tell of: one that hides `later` whole before one that shares some ids with it, and then the first.
class Rival {
 public:
  void Offer(const Answer& earlier, const Answer& later) {
    const bool hides = HidesAll(earlier.mask, later.mask);
    const bool is_better = answer_ == nullptr || (hides && !hides_) || (hides == hides_ && earlier.device < answer_->device);
    if (!is_better) return;
    answer_ = &earlier;
    hides_ = hides;
  }

  const Answer* answer() const { return answer_; }
  bool hides() const { return hides_; }

 private:
  const Answer* answer_ = nullptr;
  bool hides_ = false;
};

/// Two devices share ids when they agree in the bits that both masks count. Databases have few masks, so that a table for each
/// pair of them finds the first such device at once.
class Rivals {
 public:
  explicit Rivals(const Answers& answers) : rivals_(answers.size()) {
    for (std::size_t i = 0; i < answers.size(); ++i) groups_[answers[i].mask].push_back(i);
    for (const auto& [mask, group] : groups_) Offer(answers, mask, group);
  }

  const Rival& operator[](std::size_t i) const { return rivals_[i]; }

 private:
  using Group = std::vector<std::size_t>;  // positions of answers, ascending

  /// Offers the devices of one mask to all devices behind them.
  void Offer(const Answers& answers, unsigned int mask, const Group& group) {
    std::map<unsigned int, Group> by_common_bits;
    for (const auto& [other_mask, others] : groups_) {
      Group& all = by_common_bits[mask & other_mask];
      all.insert(all.end(), others.begin(), others.end());
    }
    for (const auto& [common, others] : by_common_bits) {
      std::unordered_map<unsigned int, std::size_t> firsts;
      firsts.reserve(group.size());
      for (const std::size_t i : group) firsts.try_emplace(answers[i].id & common, i);
      for (const std::size_t i : others) {
        const auto first = firsts.find(answers[i].id & common);
        if (first != firsts.end() && first->second < i) rivals_[i].Offer(answers[first->second], answers[i]);
      }
    }
  }

  std::vector<Rival> rivals_;  // of each answer
  std::map<unsigned int, Group> groups_;
};

Answers AnswersOf(const Records& records, const Kind& kind) {
  Answers answers;
  for (const DescribedDevice& device : records.devices) {
    const unsigned int id = (device.device->*kind.id)();
    const unsigned int mask = device.device->GetDeviceIDScanMask();
    if (id != 0 && mask != 0) answers.push_back({id & mask, mask, &device});
  }
  return answers;
}

std::string Told(const Answer& answer, const Rival& rival, const Kind& kind) {
  const Answer& earlier = *rival.answer();
  const std::string who = Called(*earlier.device, *answer.device) + ", which comes first";
  if (rival.hides()) return std::string("the ") + kind.what + " finds " + who + " and answers to all ids of this device";
  return std::string("the ") + kind.what + " " + IdText(earlier.id | answer.id) + " finds " + who;
}

}  // namespace

void CheckIdentifiers(const Records& records, Findings& findings) {
  for (const Kind& kind : kKinds) {
    const Answers answers = AnswersOf(records, kind);
    const Rivals rivals(answers);
    for (std::size_t i = 0; i < answers.size(); ++i) {
      if (rivals[i].answer() == nullptr) continue;
      findings.Add(*answers[i].device->element, kind.attribute, rivals[i].hides() ? Code::kIdHidden : Code::kIdShared,
                   Told(answers[i], rivals[i], kind));
    }
  }
}

}  // namespace tool
