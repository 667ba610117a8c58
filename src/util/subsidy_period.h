// Which rules of the dental-care subsidy a cost-estimate row falls under: those of 1999 or those
// of 2002 (docs/dental-care-subsidy.md has the sources).
#pragma once

#include <cstdint>
#include <string_view>

#include "automation/value.h"

namespace util {

// Debit code of a row billed under the rules for patients of 65 and older.
inline constexpr std::u16string_view kElderlyDebit = u"Ä";

// True when the row falls under the older rules. Never true for a row registered on or after
// 2002-07-01, if the session's date format has a year.
bool IsInSubsidyPeriod(std::int32_t rateNo, automation::Date regDate, std::u16string_view debit);

}  // namespace util
