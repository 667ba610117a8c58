#include "field-tests/core/text.h"

#include <array>
#include <gtest/gtest.h>

namespace field_tests {
namespace {

// As in the data of an event, behind a description of odd length.
constexpr auto kData = std::to_array("\x05\0\0AbO\0p\0\0\0D\0o\0n\0e");
constexpr std::string_view kBytes(kData.data(), kData.size());

TEST(Utf16InBytes, IsFoundAtAnyPlace) {
  EXPECT_TRUE(HoldsUtf16(kBytes, u"Op"));
}

TEST(Utf16InBytes, IsFoundWithItsZeroOnly) {
  EXPECT_FALSE(HoldsUtf16(kBytes, u"O"));
  EXPECT_FALSE(HoldsUtf16(kBytes, u"Done"));
  EXPECT_FALSE(HoldsUtf16("", u"Op"));
}

}  // namespace
}  // namespace field_tests
