// The operations of a type library's interface, a line each.
#pragma once

#include <string>
#include <vector>

#include "windows/bstr.h"
#include "windows/com_ptr.h"

namespace description {

// Of a name in a type library, which has ASCII letters only.
std::string Narrow(const windows::Bstr& text);

// "SLOT ID Name(direction TYPE argument, ...)", the slot in the vtable and the id in hex.
std::vector<std::string> Signatures(ITypeInfo& info);

// The vtable's view of a dual interface; nothing for another one.
windows::ComPtr<ITypeInfo> VtableOf(ITypeInfo& info);

// "FLAGS Name" of each interface of a class.
std::vector<std::string> InterfacesOf(ITypeInfo& info);

}  // namespace description
