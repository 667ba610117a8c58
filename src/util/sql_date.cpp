#include "util/sql_date.h"

#include "automation/date.h"
#include "platform/conversions.h"
#include "util/error_trap.h"
#include "util/session_settings.h"

namespace util {
namespace {

constexpr std::int16_t kHashDelimited = 1;
constexpr std::int16_t kQuoteDelimited = 2;

}  // namespace

std::u16string GetSqlDate(automation::Date date, bool plainForm, std::u16string& timeText) {
  return UnderTrap(u" in GetSqlDate", kModBVilnorIcon, [&]() -> std::u16string {
    if (!timeText.empty()) {
      timeText.insert(0, u" ");
    }
    const std::int16_t dbType = CurrentSettings().gDbType;
    if (dbType != kHashDelimited && dbType != kQuoteDelimited) {
      return {};
    }
    if (plainForm) {
      return u"'" + platform::DateText(date) + timeText + u"'";
    }
    const std::u16string delimiter = dbType == kHashDelimited ? u"#" : u"'";
    return delimiter + automation::FormatDate(date, u"mm-dd-yyyy") + timeText + delimiter;
  });
}

}  // namespace util
