#include "automation/date.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "automation/automation_error.h"
#include "automation/text.h"

namespace automation {
namespace {

using std::chrono::sys_days;

constexpr std::int32_t kSecondsOfDay = 86400;
constexpr sys_days kDayZero = std::chrono::year(1899) / 12 / 30;
constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;

std::int32_t DayNumber(int year, int month, int day) {
  const auto date = std::chrono::year(year) / month / day;
  return static_cast<std::int32_t>((sys_days(date) - kDayZero).count());
}

std::u16string Padded(int number, std::size_t width) {
  std::u16string digits = Decimal10(number);
  return digits.size() < width ? std::u16string(width - digits.size(), u'0') + digits : digits;
}

// Expands a picture: `part` returns the text for each run of one character.
template <class Part>
std::u16string ByPicture(std::u16string_view picture, Part part) {
  std::u16string result;
  for (std::size_t i = 0; i < picture.size();) {
    const std::size_t end = std::min(picture.find_first_not_of(picture[i], i), picture.size());
    const std::u16string_view run = picture.substr(i, end - i);
    result += part(run);
    i = end;
  }
  return result;
}

std::u16string DatePart(const DateParts& parts, std::u16string_view run) {
  switch (run.front()) {
    case u'y':
    case u'Y':
      return run.size() > 2 ? Padded(parts.year, 4) : Padded(parts.year % 100, 2);
    case u'm':
    case u'M':
      return Padded(parts.month, std::min<std::size_t>(run.size(), 2));
    case u'd':
    case u'D':
      return Padded(parts.day, std::min<std::size_t>(run.size(), 2));
    default:
      return std::u16string(run);
  }
}

std::u16string TimeText(const DateParts& parts, const Regional& regional) {
  const std::u16string rest = regional.timeSeparator + Padded(parts.minute, 2) +
                              regional.timeSeparator + Padded(parts.second, 2);
  if (!regional.twelveHourClock) {
    return Padded(parts.hour, 2) + rest;
  }
  const int hour = parts.hour % 12 == 0 ? 12 : parts.hour % 12;
  return Decimal10(hour) + rest + u" " + (parts.hour < 12 ? regional.amText : regional.pmText);
}

// Reads a date text from left to right.
class DateReader {
 public:
  DateReader(std::u16string_view text, const Regional& regional)
      : text_(text), regional_(regional) {}

  std::optional<Date> Read() {
    DateParts parts;
    const bool dateFirst = ReadDate(parts);
    if (dateFirst && !AtEnd() && !SkipBlanks()) {
      return std::nullopt;
    }
    if (!AtEnd() && !ReadTime(parts)) {
      return std::nullopt;
    }
    if ((!dateFirst && text_.empty()) || !AtEnd() || !IsValid(parts)) {
      return std::nullopt;
    }
    return MakeDate(parts);
  }

 private:
  struct Number {
    int value = 0;
    std::size_t digits = 0;
  };

  bool AtEnd() const { return at_ == text_.size(); }

  bool SkipBlanks() {
    const std::size_t from = at_;
    at_ = std::min(text_.find_first_not_of(u' ', at_), text_.size());
    return at_ > from;
  }

  std::optional<Number> ReadNumber() {
    Number number;
    while (!AtEnd() && text_[at_] >= u'0' && text_[at_] <= u'9' && number.digits < 5) {
      number.value = number.value * 10 + (text_[at_++] - u'0');
      ++number.digits;
    }
    return number.digits == 0 || number.digits > 4 ? std::nullopt : std::optional(number);
  }

  bool Take(std::u16string_view part) {
    if (text_.substr(at_, part.size()) != part) {
      return false;
    }
    at_ += part.size();
    return true;
  }

  // Reads three numbers with their separators; consumes nothing if there is no date. Two numbers
  // are not a date: the year is not guessed.
  bool ReadDate(DateParts& parts) {
    const std::size_t from = at_;
    const auto first = ReadNumber();
    const char16_t separator = AtEnd() ? u'\0' : text_[at_];
    if (!first || std::u16string_view(u"-/. ").find(separator) == std::u16string_view::npos) {
      at_ = from;
      return false;
    }
    PassSeparator(separator);
    const auto second = ReadNumber();
    if (!second || AtEnd() || !FollowsAs(text_[at_], separator)) {
      at_ = from;
      return false;
    }
    PassSeparator(text_[at_]);
    const auto third = ReadNumber();
    if (!third || !Assign(*first, *second, *third, parts)) {
      at_ = from;
      return false;
    }
    if (regional_.shortDate.ends_with(separator)) {
      Take({&separator, 1});
    }
    return true;
  }

  // Whether the second separator repeats the first, or both are the picture's own, as in
  // "dd/MM yyyy".
  bool FollowsAs(char16_t second, char16_t first) const {
    std::u16string ofPicture = regional_.shortDate;
    std::erase_if(ofPicture, [](char16_t unit) {
      return std::u16string_view(u"yYmMdD").find(unit) != std::u16string_view::npos;
    });
    return second == first || ofPicture == std::u16string{first, second};
  }

  // Pictures like "d. M. yyyy" have a blank after each separator.
  void PassSeparator(char16_t separator) {
    ++at_;
    if (separator != u' ') {
      SkipBlanks();
    }
  }

  bool Assign(Number first, Number second, Number third, DateParts& parts) const {
    const auto position = [&](std::u16string_view letters) {
      return regional_.shortDate.find_first_of(letters);
    };
    const bool yearFirst = first.digits > 2 || (third.digits <= 2 && position(u"yY") == 0);
    const bool dayBeforeMonth = position(u"dD") < position(u"mM");
    if (yearFirst) {
      return SetDate(first, second, third, parts) ||
             (second.value > 12 && SetDate(first, third, second, parts));
    }
    const Number& month = dayBeforeMonth ? second : first;
    const Number& day = dayBeforeMonth ? first : second;
    // Kept: like the classic runtime, swaps month and day if the month is above 12. No other order
    // is tried, since a two-digit year could be in any position.
    return SetDate(third, month, day, parts) ||
           (month.value > 12 && SetDate(third, day, month, parts));
  }

  static bool SetDate(Number year, Number month, Number day, DateParts& parts) {
    if (month.digits > 2 || day.digits > 2 || year.digits == 3) {
      return false;
    }
    parts.year = year.digits > 2 ? year.value : year.value + (year.value < 30 ? 2000 : 1900);
    parts.month = month.value;
    parts.day = day.value;
    return IsValid(parts);
  }

  bool ReadTime(DateParts& parts) {
    const auto hour = ReadNumber();
    if (!hour || hour->digits > 2 || !TakeTimeSeparator()) {
      return false;
    }
    const auto minute = ReadNumber();
    if (!minute || minute->digits > 2) {
      return false;
    }
    parts.hour = hour->value;
    parts.minute = minute->value;
    if (TakeTimeSeparator()) {
      const auto second = ReadNumber();
      if (!second || second->digits > 2) {
        return false;
      }
      parts.second = second->value;
    }
    return ReadHalfDay(parts);
  }

  bool TakeTimeSeparator() { return Take(u":") || Take(regional_.timeSeparator); }

  bool ReadHalfDay(DateParts& parts) {
    if (!SkipBlanks() || AtEnd()) {
      return AtEnd();
    }
    const std::u16string_view rest = text_.substr(at_);
    const bool morning = EqualsNoCase(rest, u"AM") || EqualsNoCase(rest, regional_.amText);
    const bool evening = EqualsNoCase(rest, u"PM") || EqualsNoCase(rest, regional_.pmText);
    if ((!morning && !evening) || parts.hour < 1 || parts.hour > 12) {
      return false;
    }
    parts.hour = parts.hour % 12 + (evening ? 12 : 0);
    at_ = text_.size();
    return true;
  }

  std::u16string_view text_;
  const Regional& regional_;
  std::size_t at_ = 0;
};

}  // namespace

bool IsValid(const DateParts& parts) {
  const auto date = std::chrono::year(parts.year) / parts.month / parts.day;
  return parts.year >= kFirstYear && parts.year <= kLastYear && parts.month >= 1 &&
         parts.month <= 12 && parts.day >= 1 && parts.day <= 31 && date.ok() && parts.hour >= 0 &&
         parts.hour < 24 && parts.minute >= 0 && parts.minute < 60 && parts.second >= 0 &&
         parts.second < 60;
}

Date MakeDate(const DateParts& parts) {
  if (!IsValid(parts)) {
    throw AutomationError(RuntimeError::InvalidProcedureCall);
  }
  const double day = DayNumber(parts.year, parts.month, parts.day);
  const double time =
      static_cast<double>(parts.hour * 3600 + parts.minute * 60 + parts.second) / kSecondsOfDay;
  return {day < 0 ? day - time : day + time};
}

DateParts PartsOf(Date date) {
  const double first = DayNumber(kFirstYear, 1, 1) - 1.0;
  const double last = DayNumber(kLastYear, 12, 31) + 1.0;
  if (!(date.days > first && date.days < last)) {
    throw AutomationError(RuntimeError::Overflow);
  }
  double whole = std::trunc(date.days);
  auto seconds = std::lround(std::fabs(date.days - whole) * kSecondsOfDay);
  if (seconds == kSecondsOfDay) {
    seconds = 0;
    whole += 1;
  }
  const std::chrono::year_month_day day(kDayZero + std::chrono::days(std::lround(whole)));
  const DateParts parts{.year = static_cast<int>(day.year()),
                        .month = static_cast<int>(static_cast<unsigned>(day.month())),
                        .day = static_cast<int>(static_cast<unsigned>(day.day())),
                        .hour = static_cast<int>(seconds / 3600),
                        .minute = static_cast<int>(seconds / 60 % 60),
                        .second = static_cast<int>(seconds % 60)};
  if (!IsValid(parts)) {
    throw AutomationError(RuntimeError::Overflow);
  }
  return parts;
}

Date DayOf(Date date) {
  DateParts parts = PartsOf(date);
  parts.hour = parts.minute = parts.second = 0;
  return MakeDate(parts);
}

std::u16string DateText(Date date, const Regional& regional) {
  const DateParts parts = PartsOf(date);
  const DateParts epoch;
  const bool midnight = parts.hour == 0 && parts.minute == 0 && parts.second == 0;
  const bool dayZero =
      parts.year == epoch.year && parts.month == epoch.month && parts.day == epoch.day;
  std::u16string text = dayZero ? std::u16string() : FormatDate(date, regional.shortDate);
  if (dayZero || !midnight) {
    text += (text.empty() ? u"" : u" ") + TimeText(parts, regional);
  }
  return text;
}

std::optional<Date> ParseDate(std::u16string_view text, const Regional& regional) {
  return DateReader(Trim(text), regional).Read();
}

std::u16string FormatDate(Date date, std::u16string_view picture) {
  const DateParts parts = PartsOf(date);
  return ByPicture(picture, [&](std::u16string_view run) { return DatePart(parts, run); });
}

std::u16string FormatTime(Date date) {
  const DateParts parts = PartsOf(date);
  return Padded(parts.hour, 2) + u":" + Padded(parts.minute, 2) + u":" + Padded(parts.second, 2);
}

Date AddYears(Date date, int years) {
  DateParts parts = PartsOf(date);
  parts.year += years;
  if (parts.month == 2 && parts.day == 29 && !std::chrono::year(parts.year).is_leap()) {
    parts.day = 28;
  }
  return MakeDate(parts);
}

std::int32_t DaysBetween(Date from, Date to) {
  const DateParts first = PartsOf(from);
  const DateParts second = PartsOf(to);
  return DayNumber(second.year, second.month, second.day) -
         DayNumber(first.year, first.month, first.day);
}

}  // namespace automation
