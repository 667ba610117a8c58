// Calendar dates of the classic runtime: reading, printing, arithmetic.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "automation/regional.h"
#include "automation/value.h"

namespace automation {

// A date and time split into parts; years 100 to 9999, month and day from 1.
struct DateParts {
  int year = 1899;
  int month = 12;
  int day = 30;
  int hour = 0;
  int minute = 0;
  int second = 0;
  bool operator==(const DateParts&) const = default;
};

bool IsValid(const DateParts& parts);
// Error 5 for parts outside the calendar.
Date MakeDate(const DateParts& parts);
// Rounds to the nearest second. Error 6 for a date outside the years 100 to 9999.
DateParts PartsOf(Date date);
// The same day at midnight.
Date DayOf(Date date);
// The date in the locale's short date picture, followed by the time unless it is midnight; only the
// time if the day is 1899-12-30.
std::u16string DateText(Date date, const Regional& regional);
// Reads a date in the user's locale; nullopt if the text is not one. Numbers are in the order of
// the short date picture, but year first if four digits lead; month and day are swapped if the
// month is above 12. Separators are one kind of "-", "/", "." or blank, or the picture's own two;
// blanks may follow the others, and the text may end with a separator if the picture does. A time
// "hh:mm[:ss]" is optional. A two-digit year below 30 is in the 2000s, otherwise in the 1900s.
// Names of months and weekdays are not read.
std::optional<Date> ParseDate(std::u16string_view text, const Regional& regional);
// `picture` with yyyy, yy, mm, m, dd, d (in either case) replaced by the date's parts, as the
// classic Format function does for these; everything else is kept.
std::u16string FormatDate(Date date, std::u16string_view picture);
// "HH:MM:SS", 24 hours.
std::u16string FormatTime(Date date);
// The same month and day `years` later; 29 February becomes 28 February in a common year.
Date AddYears(Date date, int years);
// Whole calendar days from `from` to `to`, ignoring times of day.
std::int32_t DaysBetween(Date from, Date to);

}  // namespace automation
