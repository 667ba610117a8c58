#include "util/rate_compensation.h"

#include <cstdint>

#include "automation/conversion.h"
#include "automation/date.h"
#include "platform/conversions.h"
#include "util/error_trap.h"
#include "util/null_safe.h"
#include "util/rounding.h"
#include "util/subsidy_period.h"

namespace util {
namespace {

constexpr std::int32_t kShareOfFeeRate = 99;
constexpr double kSharePercent = 60;
constexpr double kElderlyFactor = 1.5;

// A row with its values read and its patient's age group.
struct Row {
  double amount1;
  double amount2;
  double amount3;
  bool increasedComp;
  bool increasedCompApplied;
  std::int32_t rateNo;
  bool elderlyDebit;
  AgeGroup ageGroup;
};

double Amount(const automation::Value& value) {
  return platform::ToDouble(NullToZero(value));
}

bool IsExamination(std::int32_t rateNo) {
  return rateNo == 11 || rateNo == 12;
}

// Rates for which the addition for the elderly is not paid.
bool IsWithoutAddition(std::int32_t rateNo) {
  return IsExamination(rateNo) || (rateNo >= 91 && rateNo <= 98);
}

// The estimate form has fixed rows and prices for these.
bool HasFormRowOfItsOwn(std::int32_t rateNo) {
  return rateNo == 681 || rateNo == 682;
}

double OlderAmount(const Row& row) {
  if (row.rateNo == kShareOfFeeRate) {
    return automation::RoundToInt32(automation::InDoubleDigits(row.amount1 * kSharePercent) / 100);
  }
  if (row.increasedComp) {
    return row.amount3;
  }
  if (row.ageGroup == AgeGroup::From65 && row.elderlyDebit) {
    double ignored = 0;
    return IsWithoutAddition(row.rateNo)
               ? row.amount2
               : RoundOffAmount(row.amount2 * kElderlyFactor, kRoundToWhole, ignored);
  }
  const bool paysExamination =
      row.ageGroup != AgeGroup::From30To64 && row.ageGroup != AgeGroup::From65;
  return paysExamination || !IsExamination(row.rateNo) ? row.amount2 : 0;
}

RateCompensation NewerCompensation(const Row& row) {
  if (row.increasedComp && row.increasedCompApplied) {
    return {.amount1 = row.amount3};
  }
  if (!row.elderlyDebit || row.ageGroup != AgeGroup::From65) {
    return {.amount2 = row.amount3, .accepted = true};
  }
  // For all other rates nothing is paid row by row: the protection against high costs is calculated
  // on the estimate's total.
  return {.amount3 = HasFormRowOfItsOwn(row.rateNo) ? row.amount3 : 0, .accepted = true};
}

}  // namespace

Attempt<AgeGroup> GetAgeGroup(automation::Date birthDate, automation::Date referenceDate) {
  return Try(u" in GetAgeGroup", kModBVilnorIcon, [&] {
    const int age = automation::PartsOf(referenceDate).year - automation::PartsOf(birthDate).year;
    if (age < 20) {
      return AgeGroup::Under20;
    }
    if (age < 30) {
      return AgeGroup::From20To29;
    }
    return age < 65 ? AgeGroup::From30To64 : AgeGroup::From65;
  });
}

RateCompensation GetRateCompensation(const RateCompensationInput& input) {
  return UnderTrap(u" in GetRateCompensation", kModBVilnorIcon, [&]() -> RateCompensation {
    Row row{.amount1 = Amount(input.amount1),
            .amount2 = Amount(input.amount2),
            .amount3 = Amount(input.amount3),
            .increasedComp = input.increasedComp,
            .increasedCompApplied = input.increasedCompApplied,
            .rateNo = platform::ToInt32(NullToZero(input.rateNo)),
            .elderlyDebit = input.debit == kElderlyDebit,
            .ageGroup = AgeGroup::Under20};
    const auto ageGroup = GetAgeGroup(input.birthDate, input.regDate);
    if (ageGroup.Failed() || ageGroup.Value() == AgeGroup::Under20) {
      return {};
    }
    row.ageGroup = ageGroup.Value();
    if (IsInSubsidyPeriod(row.rateNo, input.regDate, input.debit)) {
      return {.amount1 = OlderAmount(row)};
    }
    return NewerCompensation(row);
  });
}

}  // namespace util
