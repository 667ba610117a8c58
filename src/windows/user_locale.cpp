#include "windows/user_locale.h"

#include <array>
#include <string_view>

#include "com/wide_text.h"
#include "com/win32.h"
#include "windows/ansi_text.h"

namespace windows {
namespace {

// Longer than any item of a locale.
constexpr std::size_t kLongestItem = 256;

// "" if the system returns nothing.
std::u16string Item(LCTYPE item) {
  std::array<wchar_t, kLongestItem> buffer{};
  GetLocaleInfoW(GetUserDefaultLCID(), item, buffer.data(), static_cast<int>(buffer.size()));
  return com::FromWide(buffer.data());
}

std::u16string ItemOr(LCTYPE item, const std::u16string& otherwise) {
  const std::u16string text = Item(item);
  return text.empty() ? otherwise : text;
}

}  // namespace

automation::Regional UserLocale::Regional() {
  const automation::Regional usual;
  return {.shortDate = ItemOr(LOCALE_SSHORTDATE, usual.shortDate),
          .timeSeparator = ItemOr(LOCALE_STIME, usual.timeSeparator),
          .decimalSeparator = ItemOr(LOCALE_SDECIMAL, {usual.decimalSeparator}).front(),
          .groupSeparator = ItemOr(LOCALE_STHOUSAND, {usual.groupSeparator}).front(),
          .twelveHourClock = Item(LOCALE_ITIME) == u"0",
          .amText = Item(LOCALE_S1159),
          .pmText = Item(LOCALE_S2359)};
}

std::u16string UserLocale::Info(std::int32_t item) {
  std::array<char, kLongestItem> buffer{};
  GetLocaleInfoA(GetUserDefaultLCID(), static_cast<LCTYPE>(item), buffer.data(),
                 static_cast<int>(buffer.size()));
  return FromAnsi(buffer.data());
}

}  // namespace windows
