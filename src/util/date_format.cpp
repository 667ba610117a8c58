#include "util/date_format.h"

#include <cstdint>

#include "automation/date.h"
#include "automation/text.h"
#include "platform/locale.h"
#include "platform/platform.h"
#include "util/error_trap.h"
#include "util/session_settings.h"

namespace util {
namespace {

// LOCALE_SSHORTDATE.
constexpr std::int32_t kShortDateItem = 31;

std::u16string SystemShortDate() {
  const std::u16string answer = platform::Current().locale.Info(kShortDateItem);
  return answer.substr(0, answer.find(u'\0'));
}

bool HasFourDigitYear(std::u16string_view picture) {
  constexpr std::u16string_view kYear = u"YYYY";
  for (; picture.size() >= kYear.size(); picture.remove_prefix(1)) {
    if (automation::EqualsNoCase(picture.substr(0, kYear.size()), kYear)) {
      return true;
    }
  }
  return false;
}

std::u16string FormatOfLanguage(std::int16_t language) {
  switch (language) {
    case 1:
      return u"YYYY-MM-DD";
    case 2:
      return u"DD-MM-YYYY";
    case 4:
    case 5:
      return u"DD/MM/YYYY";
    default:
      return u"DD.MM.YYYY";
  }
}

}  // namespace

std::u16string GetLanguageDateFormat() {
  return UnderTrap(u" in GetLanguageDateFormat", kModBVilnorIcon, [] {
    const std::u16string answer = SystemShortDate();
    if (answer.empty()) {
      return FormatOfLanguage(CurrentSettings().gKestraLangID);
    }
    return HasFourDigitYear(answer) ? answer : automation::ReplaceNoCase(answer, u"YY", u"YYYY");
  });
}

automation::Date DateFromParts(std::u16string_view year, std::u16string_view month,
                               std::u16string_view day) {
  return UnderTrap(u" in DateFromParts", kModBVilnorIcon, [&] {
    using automation::ReplaceNoCase;
    std::u16string text = CurrentSettings().gDateFormat;
    // The longer form of each part is replaced before the shorter one.
    text = ReplaceNoCase(text, u"YYYY", year);
    text = ReplaceNoCase(text, u"MM", month);
    text = ReplaceNoCase(text, u"M", month);
    text = ReplaceNoCase(text, u"DD", day);
    text = ReplaceNoCase(text, u"D", day);
    automation::Regional inThatFormat = platform::Current().locale.Regional();
    inThatFormat.shortDate = CurrentSettings().gDateFormat;
    return automation::ParseDate(text, inThatFormat).value_or(automation::Date{});
  });
}

bool SessionFormatHasYear() {
  return HasFourDigitYear(CurrentSettings().gDateFormat);
}

}  // namespace util
