#include "odbc/date_literal.h"

#include <algorithm>

#include "automation/date.h"

namespace odbc {
namespace {

constexpr std::u16string_view kDayForm = u"00-00-0000";
constexpr std::u16string_view kMomentForm = u"00-00-0000 00:00:00";

// A 0 in `form` stands for a digit, everything else for itself.
bool HasForm(std::u16string_view text, std::u16string_view form) {
  return std::equal(text.begin(), text.end(), form.begin(), form.end(),
                    [](char16_t unit, char16_t place) {
                      return place == u'0' ? unit >= u'0' && unit <= u'9' : unit == place;
                    });
}

int NumberAt(std::u16string_view text, std::size_t position, std::size_t length) {
  int number = 0;
  for (const char16_t digit : text.substr(position, length)) {
    number = number * 10 + (digit - u'0');
  }
  return number;
}

}  // namespace

std::optional<std::u16string> IsoFromHostDate(std::u16string_view text) {
  const bool hasTime = HasForm(text, kMomentForm);
  if (!hasTime && !HasForm(text, kDayForm)) {
    return std::nullopt;
  }
  automation::DateParts parts{
      NumberAt(text, 6, 4), NumberAt(text, 0, 2), NumberAt(text, 3, 2), 0, 0, 0};
  if (hasTime) {
    parts.hour = NumberAt(text, 11, 2);
    parts.minute = NumberAt(text, 14, 2);
    parts.second = NumberAt(text, 17, 2);
  }
  if (!automation::IsValid(parts)) {
    return std::nullopt;
  }
  std::u16string iso(text.substr(6, 4));
  iso += u'-';
  iso += text.substr(0, 5);
  iso += text.substr(kDayForm.size());
  return iso;
}

}  // namespace odbc
