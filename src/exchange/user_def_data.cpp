#include "exchange/user_def_data.h"

#include "automation/text.h"
#include "platform/conversions.h"

namespace exchange {
namespace {

using automation::InStr;

std::int32_t LengthOf(std::u16string_view text) {
  return static_cast<std::int32_t>(text.size());
}

// The field between two separators; 0 as the first means the start of the text. A separator that
// was not found is at 0 too, which makes the length negative: error 5.
std::int32_t Number(std::u16string_view text, std::int32_t before, std::int32_t behind) {
  return platform::ToInt32(automation::Mid(text, before + 1, behind - before - 1));
}

std::u16string Rest(std::u16string_view text, std::int32_t separator) {
  return automation::Right(text, LengthOf(text) - separator);
}

}  // namespace

NewCaseData SplitNewCaseData(std::u16string_view userDefData) {
  const std::int32_t first = InStr(1, userDefData, u"&");
  const std::int32_t second = InStr(first + 1, userDefData, u"&");
  return {.bid = Number(userDefData, first, second),
          .rid = platform::ToInt32(Rest(userDefData, second))};
}

NewFHPData SplitNewFHPData(std::u16string_view userDefData) {
  const std::int32_t first = InStr(1, userDefData, u"&");
  const std::int32_t second = InStr(first + 1, userDefData, u"&");
  const std::int32_t third = InStr(second + 1, userDefData, u"&");
  const std::int32_t fourth = InStr(third + 1, userDefData, u"&");
  return {.pid = Number(userDefData, 0, first),
          .bid = Number(userDefData, first, second),
          .rid = Number(userDefData, second, third),
          .kestraCaseId = Rest(userDefData, fourth)};
}

}  // namespace exchange
