#include "util/rounding.h"

#include <limits>

#include "util_fixture.h"

namespace util {
namespace {

class RoundingOff : public UtilTest {
 protected:
  double Rounded(double amount, std::int32_t mode) {
    difference = 99;
    return RoundOffAmount(amount, mode, difference);
  }
  double difference = 0;
};

TEST_F(RoundingOff, AmountRoundsToTheNearestStepOfTheMode) {
  EXPECT_DOUBLE_EQ(Rounded(12.25, 1), 12.25);
  EXPECT_DOUBLE_EQ(Rounded(12.26, 1), 12.25);
  EXPECT_DOUBLE_EQ(Rounded(12.28, 1), 12.30);
  EXPECT_DOUBLE_EQ(Rounded(12.26, 2), 12.30);
  EXPECT_DOUBLE_EQ(Rounded(12.24, 2), 12.20);
  EXPECT_DOUBLE_EQ(Rounded(12.26, 3), 12.50);
  EXPECT_DOUBLE_EQ(Rounded(12.24, 3), 12.00);
  EXPECT_DOUBLE_EQ(Rounded(12.49, 4), 12);
  EXPECT_DOUBLE_EQ(Rounded(12.51, 4), 13);
}

TEST_F(RoundingOff, AmountHalfwayRoundsAwayFromZero) {
  EXPECT_DOUBLE_EQ(Rounded(2.5, 4), 3);
  EXPECT_DOUBLE_EQ(Rounded(-2.5, 4), -3);
  EXPECT_DOUBLE_EQ(Rounded(0.5, 4), 1);
  EXPECT_DOUBLE_EQ(Rounded(-0.5, 4), -1);
  EXPECT_DOUBLE_EQ(Rounded(0.25, 3), 0.5);
}

TEST_F(RoundingOff, ZeroAmountStaysZero) {
  EXPECT_EQ(Rounded(0, 4), 0);
  EXPECT_EQ(difference, 0);
}

TEST_F(RoundingOff, DifferenceIsTheRoundedMinusTheGivenAmount) {
  Rounded(12.26, 1);
  EXPECT_NEAR(difference, -0.01, 1e-12);
  Rounded(-2.5, 4);
  EXPECT_EQ(difference, -0.5);
  Rounded(12.25, 1);
  EXPECT_EQ(difference, 0);
}

TEST_F(RoundingOff, UnknownModeLeavesTheAmountUnrounded) {
  for (const std::int32_t mode : {0, 5, -1, std::numeric_limits<std::int32_t>::max(),
                                  std::numeric_limits<std::int32_t>::min()}) {
    EXPECT_EQ(Rounded(12.345, mode), 12.345);
    EXPECT_EQ(difference, 0);
  }
}

// Amounts whose product with the factor is a half in double precision, and less with the extra
// digits of a 32-bit processor.
TEST_F(RoundingOff, RoundingIsTheSameOnEveryProcessor) {
  EXPECT_EQ(Rounded(0.075, 1), 0.1);
  EXPECT_EQ(Rounded(1.025, 1), 1.05);
  EXPECT_EQ(Rounded(-2.675, 1), -2.7);
  EXPECT_EQ(Rounded(0.49999999999999994, 4), 1);
  Rounded(0.03, 1);
  EXPECT_EQ(difference, 0.020000000000000004);
  Rounded(0.05, 1);
  EXPECT_EQ(difference, 0);
}

TEST_F(RoundingOff, AmountBeyond32BitsIsRounded) {
  EXPECT_EQ(Rounded(12345678901.4, 4), 12345678901);
}

TEST_F(RoundingOff, RoundingErrorNamesTheHostsForm) {
  EXPECT_EQ(Rounded(std::numeric_limits<double>::max(), 1), 0);
  EXPECT_EQ(difference, 0);
  EXPECT_EQ(dialogs.shown, Boxes{ErrorBox(u"6 Overflow frmPreDefPrice: RoundOffAmount")});
}

}  // namespace
}  // namespace util
