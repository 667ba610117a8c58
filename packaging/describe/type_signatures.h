// The operations of an interface in a type library, one line each.
#pragma once

#include <string>
#include <vector>

#include "com/bstr.h"
#include "com/com_ptr.h"

namespace description {

// Converts a name in a type library, which has ASCII letters only.
std::string Narrow(const com::Bstr& text);

// "SLOT ID Name(direction TYPE argument, ...)", the slot in the vtable and the id in hex.
std::vector<std::string> Signatures(ITypeInfo& info);

// The vtable interface of a dual interface; nothing for any other.
com::ComPtr<ITypeInfo> VtableOf(ITypeInfo& info);

// "FLAGS Name" for each interface of a class.
std::vector<std::string> InterfacesOf(ITypeInfo& info);

}  // namespace description
