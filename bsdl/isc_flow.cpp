#include "isc_flow.h"

#include <algorithm>
#include <string>

#include "bsdl/characters.h"
#include "bsdl/real_number.h"

namespace plddb::bsdl {
namespace {

/// The number that all of `text` is; 0 when it is none.
double Number(std::string_view text) { return RealNumber(text).value_or(0); }

class FlowReader {
 public:
  explicit FlowReader(const Pieces& pieces) : cursor_(pieces) {}

  Programming Read() {
    while (!cursor_.AtEnd()) {
      if (cursor_.At("REPEAT")) {
        cursor_.Next();
        repeats_ = TakeNumber();
      } else if (cursor_.At("INITIALIZE") || cursor_.At("TERMINATE")) {
        cursor_.Next();
        repeats_ = 0;
      } else if (cursor_.Skip('(')) {
        if (cursor_.AtWord()) ReadActivity();
      } else {
        cursor_.Next();
      }
    }
    return result_;
  }

 private:
  double TakeNumber() {
    const double number = cursor_.AtWord() ? Number(cursor_.Current()) : 0;
    if (number > 0) cursor_.Next();
    return number;
  }

  /// The name of an instruction, what it shifts, and how long to wait; to the ')'.
  void ReadActivity() {
    const std::string name = UpperCase(cursor_.Current());
    double wait = 0;
    double bits = 0;
    cursor_.Next();
    while (!cursor_.AtEnd() && !cursor_.At(')') && !cursor_.At('(')) {
      if (cursor_.At("WAIT")) {
        cursor_.Next();
        wait = std::max(wait, ReadWait());
      } else if (const double number = TakeNumber(); number > 0) {
        if (cursor_.Skip(':') && cursor_.Skip('?')) bits += number;
      } else {
        cursor_.Next();
      }
    }
    Add(name, wait, bits);
  }

  /// "TCK 1, 305.0e-6": clocks, seconds or both. Answers the seconds.
  double ReadWait() {
    if (cursor_.At("TCK")) {
      cursor_.Next();
      TakeNumber();
      if (!cursor_.Skip(',')) return 0;
    }
    return TakeNumber();
  }

  void Add(const std::string& name, double wait, double bits) {
    if (name == "ISC_PROGRAM") {
      result_.programTime = std::max(result_.programTime, wait);
      result_.bits += repeats_ * bits;
    } else if (name == "ISC_ERASE" || internal::EndsWith(name, "CLEAR")) {
      result_.eraseTime = std::max(result_.eraseTime, wait);
    } else if (name == "ISC_READ") {
      result_.verifyTime = std::max(result_.verifyTime, wait);
    }
  }

  TextCursor cursor_;
  double repeats_ = 0;
  Programming result_;
};

}  // namespace

Programming ReadFlows(const Pieces& pieces) { return FlowReader(pieces).Read(); }

}  // namespace plddb::bsdl
