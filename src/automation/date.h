// Calendar dates of the classic runtime: reading, printing, arithmetic.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "automation/regional.h"
#include "automation/value.h"

namespace automation {

// A moment taken apart; years 100 to 9999, month and day from 1.
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
// The date in the locale's short date picture, the time behind it when it is not midnight; only the
// time when the day is 1899-12-30.
std::u16string DateText(Date date, const Regional& regional);
// The date that a text holds in the user's locale, or nothing: numbers in the order of the short
// date picture (year first when four digits lead; month and day change places where the month is
// beyond 12), separated by one kind of "-", "/", "." or blank, or by the picture's own two (blanks
// may follow the others; one stands at the end, too, where the picture ends with it), with an
// optional time "hh:mm[:ss]"; a two-digit year below 30 lies in 2000, else in 1900. Names of months
// and weekdays are not read.
std::optional<Date> ParseDate(std::u16string_view text, const Regional& regional);
// `picture` with yyyy, yy, mm, m, dd, d (in either case) replaced by the date's parts, as the
// classic Format function does for these; all else stands as it is.
std::u16string FormatDate(Date date, std::u16string_view picture);
// "HH:MM:SS", 24 hours.
std::u16string FormatTime(Date date);
// The same month and day `years` later; 29 February becomes 28 February in a common year.
Date AddYears(Date date, int years);
// Whole calendar days from `from` to `to`, times of day left out.
std::int32_t DaysBetween(Date from, Date to);

}  // namespace automation
