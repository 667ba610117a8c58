#include "com/variant.h"

#include <type_traits>
#include <variant>

#include "automation/automation_error.h"
#include "automation/conversion.h"
#include "com/com_error.h"

namespace com {
namespace {

using automation::Currency;
using automation::Date;
using automation::Decimal;
using automation::Empty;
using automation::Null;
using automation::Value;

Decimal FromDecimal(const DECIMAL& decimal) {
  return {.lo = decimal.Lo64,
          .hi = decimal.Hi32,
          .scale = decimal.scale,
          .negative = (decimal.sign & DECIMAL_NEG) != 0};
}

DECIMAL ToDecimal(const Decimal& decimal) {
  DECIMAL result{};
  result.Lo64 = decimal.lo;
  result.Hi32 = decimal.hi;
  result.scale = decimal.scale;
  result.sign = decimal.negative ? DECIMAL_NEG : 0;
  return result;
}

// A whole number wider than the component's integers.
Value ToDecimalValue(const VARIANT& variant) {
  VARIANT decimal;
  VariantInit(&decimal);
  Check(VariantChangeType(&decimal, const_cast<VARIANT*>(&variant), 0, VT_DECIMAL));
  return FromDecimal(decimal.decVal);
}

struct Filler {
  VARIANT& target;

  void operator()(Empty /*empty*/) const { V_VT(&target) = VT_EMPTY; }
  void operator()(Null /*null*/) const { V_VT(&target) = VT_NULL; }
  void operator()(bool content) const {
    V_VT(&target) = VT_BOOL;
    V_BOOL(&target) = content ? VARIANT_TRUE : VARIANT_FALSE;
  }
  void operator()(std::int16_t content) const {
    V_VT(&target) = VT_I2;
    V_I2(&target) = content;
  }
  void operator()(std::int32_t content) const {
    V_VT(&target) = VT_I4;
    V_I4(&target) = content;
  }
  void operator()(double content) const {
    V_VT(&target) = VT_R8;
    V_R8(&target) = content;
  }
  void operator()(Currency content) const {
    V_VT(&target) = VT_CY;
    V_CY(&target).int64 = content.tenThousandths;
  }
  void operator()(const Decimal& content) const {
    // The decimal covers the whole VARIANT, so the type is set afterwards.
    target.decVal = ToDecimal(content);
    V_VT(&target) = VT_DECIMAL;
  }
  void operator()(Date content) const {
    V_VT(&target) = VT_DATE;
    V_DATE(&target) = content.days;
  }
  void operator()(const std::u16string& content) const {
    V_BSTR(&target) = Bstr(content).Detach();
    V_VT(&target) = VT_BSTR;
  }
};

}  // namespace

Variant::Variant(const Value& value) : Variant() {
  std::visit(Filler{content_}, value.content());
}

Variant::Variant(Bstr text) : Variant() {
  V_VT(&content_) = VT_BSTR;
  V_BSTR(&content_) = text.Detach();
}

Variant::Variant(IDispatch* object) : Variant() {
  if (object != nullptr) {
    object->AddRef();
    V_VT(&content_) = VT_DISPATCH;
    V_DISPATCH(&content_) = object;
  }
}

Value ToValue(const VARIANT& variant) {
  if ((V_VT(&variant) & VT_BYREF) != 0) {
    Variant content;
    Check(VariantCopyInd(content.Receive(), const_cast<VARIANT*>(&variant)));
    return ToValue(content.get());
  }
  switch (V_VT(&variant)) {
    case VT_EMPTY:
      return Empty{};
    case VT_NULL:
      return Null{};
    case VT_BOOL:
      return V_BOOL(&variant) != VARIANT_FALSE;
    case VT_I1:
      return static_cast<std::int16_t>(static_cast<signed char>(V_I1(&variant)));
    case VT_UI1:
      return static_cast<std::int16_t>(V_UI1(&variant));
    case VT_I2:
      return std::int16_t{V_I2(&variant)};
    case VT_UI2:
      return static_cast<std::int32_t>(V_UI2(&variant));
    case VT_I4:
    case VT_INT:
      return static_cast<std::int32_t>(V_I4(&variant));
    case VT_R4:
      return automation::WidenSingle(V_R4(&variant));
    case VT_R8:
      return V_R8(&variant);
    case VT_CY:
      return Currency{V_CY(&variant).int64};
    case VT_DATE:
      return Date{V_DATE(&variant)};
    case VT_BSTR:
      return TextOf(V_BSTR(&variant));
    case VT_DECIMAL:
      return FromDecimal(variant.decVal);
    case VT_UI4:
    case VT_UINT:
    case VT_I8:
    case VT_UI8:
      return ToDecimalValue(variant);
    default:
      throw automation::AutomationError(automation::RuntimeError::TypeMismatch);
  }
}

}  // namespace com
