// The arguments and results of the automation interfaces as the component's own types.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "com/win32.h"
#include "platform/database.h"

namespace vilnor_dll {

// The value behind an argument by reference. Error 0x80004003 (E_POINTER) for a null pointer.
std::int16_t In(const short* argument);
std::int32_t In(const long* argument);
std::u16string In(const BSTR* argument);
// A string by value; null means empty.
std::u16string In(BSTR argument);
// "" for an omitted argument.
std::u16string InOptional(const BSTR* argument);

// Stores a result; ignores the old value of `target`.
void Out(short* target, bool result);
void Out(long* target, std::int32_t result);
void Out(BSTR* target, const std::u16string& result);
// The ADO recordset itself, or nothing for nullptr.
void Out(IDispatch** target, std::unique_ptr<platform::Recordset> result);

// Stores a new value in an argument by reference that In() has read; frees the old string.
void Replace(short* target, std::int16_t value);
void Replace(BSTR* target, const std::u16string& value);

}  // namespace vilnor_dll
