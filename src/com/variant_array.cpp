#include "com/variant_array.h"

#include <new>

#include "automation/automation_error.h"
#include "com/bstr.h"
#include "com/com_error.h"

namespace com {

Variant NewArray(std::span<SAFEARRAYBOUND> bounds) {
  SAFEARRAY* const array =
      SafeArrayCreate(VT_VARIANT, static_cast<UINT>(bounds.size()), bounds.data());
  if (array == nullptr) {
    throw std::bad_alloc();
  }
  Variant content;
  VARIANT* const owner = content.Receive();
  V_VT(owner) = VT_ARRAY | VT_VARIANT;
  V_ARRAY(owner) = array;
  return content;
}

Variant ArrayOf(std::span<const std::u16string_view> texts) {
  SAFEARRAYBOUND bound{.cElements = static_cast<ULONG>(texts.size()), .lLbound = 0};
  Variant array = NewArray({&bound, 1});
  const Elements elements(array.get());
  VARIANT* element = elements.begin();
  for (const std::u16string_view text : texts) {
    *element++ = Variant(Bstr(text)).Detach();
  }
  return array;
}

Elements::Elements(const VARIANT& array) : array_(V_ARRAY(&array)) {
  if (V_VT(&array) != (VT_ARRAY | VT_VARIANT)) {
    throw automation::AutomationError(automation::RuntimeError::TypeMismatch);
  }
  void* data = nullptr;
  Check(SafeArrayAccessData(array_, &data));
  first_ = static_cast<VARIANT*>(data);
  for (USHORT dimension = 0; dimension < array_->cDims; ++dimension) {
    count_ *= array_->rgsabound[dimension].cElements;
  }
}

}  // namespace com
