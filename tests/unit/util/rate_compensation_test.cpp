#include "util/rate_compensation.h"

#include "util/subsidy_period.h"
#include "util_fixture.h"

namespace util {

void PrintTo(const RateCompensation& result, std::ostream* out) {
  *out << result.amount1 << ", " << result.amount2 << ", " << result.amount3
       << (result.accepted ? ", accepted" : ", not accepted");
}

namespace {

using automation::Value;

constexpr RateCompensation kNothing;

RateCompensation First(double amount) {
  return {.amount1 = amount, .accepted = false};
}
RateCompensation AcceptedSecond(double amount) {
  return {.amount2 = amount, .accepted = true};
}
RateCompensation AcceptedThird(double amount) {
  return {.amount3 = amount, .accepted = true};
}

class TheCompensationRule : public UtilTest {
 protected:
  // A row with three different amounts.
  static RateCompensationInput Row(automation::Date regDate, int age, int rateNo,
                                   std::u16string_view debit) {
    RateCompensationInput input;
    input.regDate = regDate;
    input.birthDate = Day(automation::PartsOf(regDate).year - age, 6, 15);
    input.amount1 = 1005;
    input.amount2 = 333;
    input.amount3 = 500;
    input.rateNo = rateNo;
    input.debit = debit;
    return input;
  }
  static RateCompensationInput Older(int age, int rateNo, std::u16string_view debit = u"") {
    return Row(Day(2002, 3, 31), age, rateNo, debit);
  }
  static RateCompensationInput Newer(int age, int rateNo, std::u16string_view debit = u"") {
    return Row(Day(2026, 11, 16), age, rateNo, debit);
  }
};

TEST_F(TheCompensationRule, NothingIsAcceptedForPatientsUnder20) {
  for (const int rateNo : {1, 11, 61, 99, 681}) {
    EXPECT_EQ(GetRateCompensation(Older(19, rateNo, kElderlyDebit)), kNothing);
    EXPECT_EQ(GetRateCompensation(Newer(19, rateNo, kElderlyDebit)), kNothing);
    EXPECT_EQ(GetRateCompensation(Newer(19, rateNo)), kNothing);
  }
}

// The older rules.

TEST_F(TheCompensationRule, Rate99PaidSixtyPercentOfTheFeeWhateverTheAgeAndFlags) {
  for (const int age : {20, 30, 65}) {
    auto row = Older(age, 99, kElderlyDebit);
    EXPECT_EQ(GetRateCompensation(row), First(603));
    row.increasedComp = true;
    EXPECT_EQ(GetRateCompensation(row), First(603));
  }
}

TEST_F(TheCompensationRule, Rate99WasPaidInWholeNumbersHalfToEven) {
  auto row = Older(40, 99);
  row.amount1 = 7.5;
  EXPECT_EQ(GetRateCompensation(row), First(4));  // 4.5
  row.amount1 = 5.8334;
  EXPECT_EQ(GetRateCompensation(row), First(4));  // 3.50004
  row.amount1 = 12.5;
  EXPECT_EQ(GetRateCompensation(row), First(8));  // 7.5
  // In double precision on every processor: 2.5000000000000004 and 9.499999999999998.
  row.amount1 = 4.166666666666667;
  EXPECT_EQ(GetRateCompensation(row), First(3));
  row.amount1 = 15.833333333333332;
  EXPECT_EQ(GetRateCompensation(row), First(9));
}

TEST_F(TheCompensationRule, IncreasedCompensationPaidTheThirdAmount) {
  for (const int rateNo : {1, 11, 61, 91}) {
    auto row = Older(70, rateNo, kElderlyDebit);
    row.increasedComp = true;
    EXPECT_EQ(GetRateCompensation(row), First(500));
    row.increasedCompApplied = true;
    EXPECT_EQ(GetRateCompensation(row), First(500));
  }
}

TEST_F(TheCompensationRule, Ages30To64WerePaidTheSecondAmountButNoExamination) {
  for (const int age : {30, 64}) {
    EXPECT_EQ(GetRateCompensation(Older(age, 1)), First(333));
    EXPECT_EQ(GetRateCompensation(Older(age, 10)), First(333));
    EXPECT_EQ(GetRateCompensation(Older(age, 13)), First(333));
    EXPECT_EQ(GetRateCompensation(Older(age, 61, kElderlyDebit)), First(333));
    EXPECT_EQ(GetRateCompensation(Older(age, 11)), First(0));
    EXPECT_EQ(GetRateCompensation(Older(age, 12, kElderlyDebit)), First(0));
  }
}

TEST_F(TheCompensationRule, Ages20To29WerePaidExaminationsToo) {
  for (const int age : {20, 29}) {
    for (const int rateNo : {1, 11, 12, 61}) {
      EXPECT_EQ(GetRateCompensation(Older(age, rateNo)), First(333));
      EXPECT_EQ(GetRateCompensation(Older(age, rateNo, kElderlyDebit)), First(333));
    }
  }
}

TEST_F(TheCompensationRule, ElderlyWerePaidTheSecondAmountAndHalfAgainInWholeKronor) {
  for (const int rateNo : {1, 10, 13, 61, 90, 100}) {
    EXPECT_EQ(GetRateCompensation(Older(65, rateNo, kElderlyDebit)), First(500)) << rateNo;
  }
  auto row = Older(65, 1, kElderlyDebit);
  row.amount2 = 332;
  EXPECT_EQ(GetRateCompensation(row), First(498));
  row.amount2 = -333;
  EXPECT_EQ(GetRateCompensation(row), First(-500));
}

TEST_F(TheCompensationRule, ElderlyWerePaidNoAdditionForExaminationsAndRates91To98) {
  for (const int rateNo : {11, 12, 91, 92, 93, 94, 95, 96, 97, 98}) {
    EXPECT_EQ(GetRateCompensation(Older(65, rateNo, kElderlyDebit)), First(333)) << rateNo;
  }
}

TEST_F(TheCompensationRule, ElderlyOnOtherDebitCodesWerePaidAsAges30To64) {
  EXPECT_EQ(GetRateCompensation(Older(65, 1, u"A")), First(333));
  EXPECT_EQ(GetRateCompensation(Older(65, 91, u"")), First(333));
  EXPECT_EQ(GetRateCompensation(Older(65, 11, u"A")), First(0));
  EXPECT_EQ(GetRateCompensation(Older(65, 12, u"ä")), First(0));
}

// The newer rules.

TEST_F(TheCompensationRule, EveryRateOfAnElderlyPatientRegisteredTodayIsAccepted) {
  for (int rateNo = 1; rateNo <= 1000; ++rateNo) {
    EXPECT_TRUE(GetRateCompensation(Newer(70, rateNo, kElderlyDebit)).accepted) << rateNo;
  }
}

TEST_F(TheCompensationRule, ElderlyArePaidTheThirdAmountForRates681And682Only) {
  for (const int rateNo : {681, 682}) {
    EXPECT_EQ(GetRateCompensation(Newer(65, rateNo, kElderlyDebit)), AcceptedThird(500));
  }
  for (const int rateNo : {1, 11, 60, 99, 680, 683}) {
    EXPECT_EQ(GetRateCompensation(Newer(65, rateNo, kElderlyDebit)), AcceptedThird(0));
  }
}

TEST_F(TheCompensationRule, OtherAgesAndDebitCodesGetTheThirdAsSecondAmount) {
  EXPECT_EQ(GetRateCompensation(Newer(64, 61, kElderlyDebit)), AcceptedSecond(500));
  EXPECT_EQ(GetRateCompensation(Newer(20, 681, kElderlyDebit)), AcceptedSecond(500));
  EXPECT_EQ(GetRateCompensation(Newer(70, 61, u"")), AcceptedSecond(500));
  EXPECT_EQ(GetRateCompensation(Newer(70, 681, u"ä")), AcceptedSecond(500));
}

TEST_F(TheCompensationRule, IncreasedCompensationAppliedForIsNotAccepted) {
  for (const int age : {20, 40, 70}) {
    auto row = Newer(age, 61, kElderlyDebit);
    row.increasedComp = true;
    row.increasedCompApplied = true;
    EXPECT_EQ(GetRateCompensation(row), First(500));
  }
}

TEST_F(TheCompensationRule, IncreasedCompensationMarkedByRowOrApplicationAloneIsAccepted) {
  auto row = Newer(70, 61, kElderlyDebit);
  row.increasedComp = true;
  EXPECT_TRUE(GetRateCompensation(row).accepted);
  row.increasedComp = false;
  row.increasedCompApplied = true;
  EXPECT_TRUE(GetRateCompensation(row).accepted);
}

TEST_F(TheCompensationRule, RowsPeriodDecidesBetweenOlderAndNewerRules) {
  EXPECT_EQ(GetRateCompensation(Row(Day(2002, 6, 30), 70, 1, kElderlyDebit)), First(500));
  EXPECT_EQ(GetRateCompensation(Row(Day(2002, 7, 1), 70, 1, kElderlyDebit)), AcceptedThird(0));
  EXPECT_EQ(GetRateCompensation(Row(Day(2002, 3, 31), 70, 681, kElderlyDebit)), First(500));
  EXPECT_EQ(GetRateCompensation(Row(Day(2002, 4, 1), 70, 681, kElderlyDebit)), AcceptedThird(500));
  EXPECT_EQ(GetRateCompensation(Row(Day(2002, 6, 30), 70, 681, u"A")), First(333));
  EXPECT_EQ(GetRateCompensation(Row(Day(2002, 7, 1), 70, 681, u"A")), AcceptedSecond(500));
}

TEST_F(TheCompensationRule, AgeIsThatOfTheRegistrationDatesYear) {
  auto row = Newer(65, 61, kElderlyDebit);
  row.birthDate = Day(1961, 12, 31);
  EXPECT_EQ(GetRateCompensation(row), AcceptedThird(0));
  row.birthDate = Day(1962, 1, 1);
  EXPECT_EQ(GetRateCompensation(row), AcceptedSecond(500));
}

// Values as a database holds them.

TEST_F(TheCompensationRule, NullAmountsAndRateReadAsZero) {
  auto row = Newer(70, 681, kElderlyDebit);
  row.amount1 = row.amount2 = row.amount3 = automation::Null();
  EXPECT_EQ(GetRateCompensation(row), AcceptedThird(0));
  row.rateNo = automation::Null();
  EXPECT_EQ(GetRateCompensation(row), AcceptedThird(0));
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(TheCompensationRule, AmountsAndRatesOfEveryNumberTypeAndTextAreRead) {
  auto row = Newer(70, 0, kElderlyDebit);
  row.amount3 = automation::Currency{1234500};
  for (const Value& rateNo :
       {Value(std::int16_t{681}), Value(680.6), Value(u"681"), Value(automation::Currency{6810000}),
        Value(automation::Decimal{.lo = 681, .hi = 0, .scale = 0, .negative = false})}) {
    row.rateNo = rateNo;
    EXPECT_EQ(GetRateCompensation(row), AcceptedThird(123.45));
  }
  row.amount3 = u"123,45";
  EXPECT_EQ(GetRateCompensation(row), AcceptedThird(123.45));
}

TEST_F(TheCompensationRule, NonNumericRateOrAmountShowsErrorAndAcceptsNothing) {
  auto row = Newer(70, 61, kElderlyDebit);
  row.rateNo = u"61a";
  EXPECT_EQ(GetRateCompensation(row), kNothing);
  row.rateNo = 3e9;
  EXPECT_EQ(GetRateCompensation(row), kNothing);
  row.rateNo = 61;
  row.amount3 = u"många";
  EXPECT_EQ(GetRateCompensation(row), kNothing);
  EXPECT_EQ(dialogs.shown, (Boxes{ErrorBox(u"13 Type mismatch in GetRateCompensation"),
                                  ErrorBox(u"6 Overflow in GetRateCompensation"),
                                  ErrorBox(u"13 Type mismatch in GetRateCompensation")}));
}

TEST_F(TheCompensationRule, ShareOfTheFeeBeyond32BitsShowsErrorAndAcceptsNothing) {
  auto row = Older(40, 99);
  row.amount1 = 1e10;
  EXPECT_EQ(GetRateCompensation(row), kNothing);
  EXPECT_EQ(dialogs.shown, Boxes{ErrorBox(u"6 Overflow in GetRateCompensation")});
}

TEST_F(TheCompensationRule, UnknownAgeAcceptsNothing) {
  auto row = Newer(70, 61, kElderlyDebit);
  row.birthDate = kNoDate;
  EXPECT_EQ(GetRateCompensation(row), kNothing);
  EXPECT_EQ(dialogs.shown, Boxes{ErrorBox(u"6 Overflow in GetAgeGroup")});
}

TEST_F(TheCompensationRule, CompensationRuleIsTheSameUnderUsSettings) {
  UseUsLocale();
  EXPECT_EQ(GetRateCompensation(Row(Day(2002, 6, 30), 70, 1, kElderlyDebit)), First(500));
  EXPECT_EQ(GetRateCompensation(Row(Day(2002, 7, 1), 70, 1, kElderlyDebit)), AcceptedThird(0));
}

}  // namespace
}  // namespace util
