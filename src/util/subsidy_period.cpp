#include "util/subsidy_period.h"

#include <algorithm>
#include <array>
#include <limits>

#include "util/date_format.h"
#include "util/error_trap.h"

namespace util {
namespace {

constexpr std::int32_t kFirst = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kLast = std::numeric_limits<std::int32_t>::max();

enum class Debit { Any, Elderly };

// Rows of these rates fall under the older rules when they are registered before the first day of
// `month` 2002.
struct SubsidyLine {
  std::int32_t firstRate;
  std::int32_t lastRate;
  Debit debit;
  std::u16string_view month;
};

// The first line that matches a row decides. docs/dental-care-subsidy.md says for each line what is
// law and what is a decision.
constexpr auto kLines = std::to_array<SubsidyLine>({
    // Treated as basic care, which needs no prior approval, so the reform's date alone decides.
    {kFirst, 59, Debit::Any, u"07"},
    // The same; 77, between them, is not.
    {70, 76, Debit::Any, u"07"},
    {78, 79, Debit::Any, u"07"},
    // Rates whose amount does not depend on the debit code.
    {91, 93, Debit::Any, u"07"},
    {97, 98, Debit::Any, u"07"},
    // Sixty percent of the fee for every patient.
    {99, 99, Debit::Any, u"07"},
    // All other care is treated as prosthetics. For the elderly, a treatment planned in the last
    // quarter before the reform is carried out under it.
    {kFirst, kLast, Debit::Elderly, u"04"},
    // For everyone else the rules change with the reform itself.
    {kFirst, kLast, Debit::Any, u"07"},
});

bool Fits(const SubsidyLine& line, std::int32_t rateNo, std::u16string_view debit) {
  return rateNo >= line.firstRate && rateNo <= line.lastRate &&
         (line.debit == Debit::Any || debit == kElderlyDebit);
}

}  // namespace

bool IsInSubsidyPeriod(std::int32_t rateNo, automation::Date regDate, std::u16string_view debit) {
  // Reading the boundary takes longer than all else that a row needs. In a format with a year, the
  // boundary is a day of 2002 or no date.
  constexpr automation::Date kAfter2002{37622};  // 2003-01-01
  if (regDate.days >= kAfter2002.days && SessionFormatHasYear()) {
    return false;
  }
  return UnderTrap(u" in IsInSubsidyPeriod", kModBVilnorIcon, [&] {
    const auto line = std::find_if(kLines.begin(), kLines.end(), [&](const SubsidyLine& each) {
      return Fits(each, rateNo, debit);
    });
    return regDate.days < DateFromParts(u"2002", line->month, u"01").days;
  });
}

}  // namespace util
