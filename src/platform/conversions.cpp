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

// Reading the system's settings costs more than a conversion, so only conversions that use them get
// them: those that read texts, and those that print fractions or dates.
bool IsReadBySettings(const automation::Value& value) {
  return value.Is<std::u16string>();
}
bool IsPrintedBySettings(const automation::Value& value) {
  return value.Is<double>() || value.Is<automation::Currency>() ||
         value.Is<automation::Decimal>() || value.Is<automation::Date>();
}

template <class Result>
Result Convert(Result (*convert)(const automation::Value&, const automation::Regional&),
               const automation::Value& value, bool bySettings) {
  static const automation::Regional unused;
  return bySettings ? convert(value, Regional()) : convert(value, unused);
}

}  // namespace

std::int16_t ToInt16(const automation::Value& value) {
  return Convert(automation::ToInt16, value, IsReadBySettings(value));
}
std::int32_t ToInt32(const automation::Value& value) {
  return Convert(automation::ToInt32, value, IsReadBySettings(value));
}
double ToDouble(const automation::Value& value) {
  return Convert(automation::ToDouble, value, IsReadBySettings(value));
}
bool ToBool(const automation::Value& value) {
  return Convert(automation::ToBool, value, IsReadBySettings(value));
}
std::u16string ToText(const automation::Value& value) {
  return Convert(automation::ToText, value, IsPrintedBySettings(value));
}
automation::Date ToDate(const automation::Value& value) {
  return Convert(automation::ToDate, value, IsReadBySettings(value));
}
std::u16string DateText(automation::Date date) {
  return automation::DateText(date, Regional());
}

}  // namespace platform
