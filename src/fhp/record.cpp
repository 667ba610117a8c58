#include "fhp/record.h"

#include "platform/conversions.h"

namespace fhp {

std::u16string Record::Text(const char16_t* column) const {
  return platform::ToText((*this)[column]);
}

std::u16string Record::TextOrEmpty(const char16_t* column) const {
  const automation::Value value = (*this)[column];
  return value.IsNull() ? std::u16string() : platform::ToText(value);
}

}  // namespace fhp
