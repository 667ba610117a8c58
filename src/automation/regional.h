// The parts of the user's locale that the conversions need.
#pragma once

#include <string>

namespace automation {

struct Regional {
  // Short date picture of the user's locale, as the system returns it ("yyyy-MM-dd", "M/d/yyyy").
  std::u16string shortDate = u"M/d/yyyy";
  // Separates hours, minutes and seconds.
  std::u16string timeSeparator = u":";
  char16_t decimalSeparator = u'.';
  char16_t groupSeparator = u',';
  // 12-hour clock: "2:05:00 PM" instead of "14:05:00".
  bool twelveHourClock = true;
  std::u16string amText = u"AM";
  std::u16string pmText = u"PM";
};

}  // namespace automation
