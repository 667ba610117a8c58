#include "fhp/record.h"

#include "automation/automation_error.h"
#include "platform/conversions.h"

namespace fhp {

std::u16string Record::Text(const char16_t* column) const {
  return platform::ToText((*this)[column]);
}

std::u16string Record::TextOrEmpty(const char16_t* column) const {
  const automation::Value value = (*this)[column];
  return value.IsNull() ? std::u16string() : platform::ToText(value);
}

platform::Recordset& Record::Rows() const {
  if (!rows_) {
    throw automation::AutomationError(automation::RuntimeError::ObjectNotSet);
  }
  return *rows_;
}

}  // namespace fhp
