// What no parser is given.
#include "platform/result_document.h"

#include <gtest/gtest.h>
#include <string>

namespace platform {
namespace {

std::string Equals(std::size_t count) {
  return std::string(count, '=');
}

TEST(TooManyAttributes, AreMoreThanTenThousandOfOneElement) {
  EXPECT_FALSE(HasTooManyAttributes(""));
  EXPECT_FALSE(HasTooManyAttributes("<a" + Equals(10'000)));
  EXPECT_TRUE(HasTooManyAttributes("<a" + Equals(10'001)));
  EXPECT_TRUE(HasTooManyAttributes("<r><a" + Equals(10'001) + "/></r>"));
  EXPECT_TRUE(HasTooManyAttributes(Equals(10'001)));
}

TEST(TooManyAttributes, AreCountedForEachElementAlone) {
  std::string bytes;
  for (int i = 0; i < 5; ++i) {
    bytes += "<a" + Equals(9'000) + ">";
  }
  EXPECT_FALSE(HasTooManyAttributes(bytes));
}

// A ">" may stand in a value.
TEST(TooManyAttributes, AreCountedBeyondAnEndThatIsNone) {
  std::string bytes = "<a";
  for (int i = 0; i < 10'001; ++i) {
    bytes += " b='>'";
  }
  EXPECT_TRUE(HasTooManyAttributes(bytes));
}

}  // namespace
}  // namespace platform
