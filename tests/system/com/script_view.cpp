#include "system/com/script_view.h"

#include <gtest/gtest.h>
#include <string>

#include "com/variant.h"

namespace system_tests {

using automation::Value;
using com::Variant;

Value Get(IDispatch& object, const wchar_t* name, const Value& argument) {
  std::wstring text = name;
  LPOLESTR names = text.data();
  DISPID id = 0;
  EXPECT_EQ(object.GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id), S_OK);
  const Variant value(argument);
  VARIANT given = value.get();
  DISPPARAMS parameters = {.rgvarg = &given,
                           .rgdispidNamedArgs = nullptr,
                           .cArgs = argument.IsEmpty() ? 0U : 1U,
                           .cNamedArgs = 0};
  Variant result;
  EXPECT_EQ(object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                          &parameters, result.Receive(), nullptr, nullptr),
            S_OK);
  if (V_VT(&result.get()) == VT_DISPATCH) {
    return Get(*V_DISPATCH(&result.get()), L"Value");
  }
  return com::ToValue(result.get());
}

Value Field(IDispatch& recordset, const char16_t* name) {
  std::wstring text = L"Fields";
  LPOLESTR names = text.data();
  DISPID id = 0;
  EXPECT_EQ(recordset.GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id), S_OK);
  DISPPARAMS none{};
  Variant fields;
  EXPECT_EQ(recordset.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                             fields.Receive(), nullptr, nullptr),
            S_OK);
  return V_VT(&fields.get()) == VT_DISPATCH ? Get(*V_DISPATCH(&fields.get()), L"Item", Value(name))
                                            : Value();
}

}  // namespace system_tests
