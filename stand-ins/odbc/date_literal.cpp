#include "odbc/date_literal.h"

#include <algorithm>

#include "odbc/column_value.h"

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

}  // namespace

std::optional<std::u16string> IsoFromHostDate(std::u16string_view text) {
  const bool hasForm = HasForm(text, kDayForm) || HasForm(text, kMomentForm);
  if (!hasForm || !ParseTimestamp(text)) {
    return std::nullopt;
  }
  std::u16string iso(text.substr(6, 4));
  iso += u'-';
  iso += text.substr(0, 5);
  iso += text.substr(kDayForm.size());
  return iso;
}

}  // namespace odbc
