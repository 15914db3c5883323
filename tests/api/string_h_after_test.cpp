// clang-format off
#include "StringServices.h"

#include <string.h>  // NOLINT: the platform's own, after the library's
// clang-format on
#include <gtest/gtest.h>

#include <string>

namespace {

TEST(LetterCase, OfTextsIsThisLibrarysWithAfterStringH) {
  char* none = nullptr;
  strupr(none);  // the platform's would end the program
  strlwr(none);
  std::string text = "aZ1\xE4\xC4";
  strupr(text.data());
  EXPECT_EQ(text, "AZ1\xE4\xC4");
  strlwr(text.data());
  EXPECT_EQ(text, "az1\xE4\xC4");
}

}  // namespace
