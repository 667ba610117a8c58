#include "platform/conversions.h"

#include "automation/conversion.h"
#include "automation/date.h"
#include "platform/locale.h"
#include "platform/platform.h"

namespace platform {
namespace {

automation::Regional Regional() {
  return Current().locale.Regional();
}

}  // namespace

std::int16_t ToInt16(const automation::Value& value) {
  return automation::ToInt16(value, Regional());
}
std::int32_t ToInt32(const automation::Value& value) {
  return automation::ToInt32(value, Regional());
}
double ToDouble(const automation::Value& value) {
  return automation::ToDouble(value, Regional());
}
bool ToBool(const automation::Value& value) {
  return automation::ToBool(value, Regional());
}
std::u16string ToText(const automation::Value& value) {
  return automation::ToText(value, Regional());
}
automation::Date ToDate(const automation::Value& value) {
  return automation::ToDate(value, Regional());
}
std::u16string FixedText(double number) {
  return automation::FixedText(number, Regional());
}
std::u16string DateText(automation::Date date) {
  return automation::DateText(date, Regional());
}

}  // namespace platform
