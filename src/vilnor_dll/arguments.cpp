#include "vilnor_dll/arguments.h"

#include "automation/automation_error.h"
#include "com/bstr.h"
#include "windows/ado_database.h"

namespace vilnor_dll {
namespace {

template <class Argument>
const Argument& Referred(const Argument* argument) {
  if (argument == nullptr) {
    throw automation::ErrorFromHresult(E_POINTER, {}, {});
  }
  return *argument;
}

}  // namespace

std::int16_t In(const short* argument) {
  return Referred(argument);
}

std::int32_t In(const long* argument) {
  return Referred(argument);
}

std::u16string In(const BSTR* argument) {
  return com::TextOf(Referred(argument));
}

std::u16string In(BSTR argument) {
  return com::TextOf(argument);
}

std::u16string InOptional(const BSTR* argument) {
  return argument == nullptr ? std::u16string() : com::TextOf(*argument);
}

void Out(short* target, bool result) {
  *target = result ? VARIANT_TRUE : VARIANT_FALSE;
}

void Out(long* target, std::int32_t result) {
  *target = result;
}

void Out(BSTR* target, const std::u16string& result) {
  *target = com::Bstr(result).Detach();
}

void Out(IDispatch** target, std::unique_ptr<platform::Recordset> result) {
  *target = result ? windows::DispatchOf(*result).Detach() : nullptr;
}

void Replace(short* target, std::int16_t value) {
  *target = value;
}

void Replace(BSTR* target, const std::u16string& value) {
  com::Bstr replacement(value);
  SysFreeString(*target);
  *target = replacement.Detach();
}

}  // namespace vilnor_dll
