// The component's automation interfaces, as the type library's compiler describes them to C++.
#pragma once

#include "com/com_object.h"
// Needs win32.h in front of it.
#include "typelib/Vilnor.h"

namespace com {

template <>
struct BaseOf<_BVilnor> : Extends<IDispatch> {};
template <>
struct BaseOf<_DBVilnor> : Extends<IDispatch> {};

}  // namespace com

namespace vilnor_dll {

// The source of errors that name none themselves.
inline constexpr const wchar_t* kSource = L"Vilnor";

}  // namespace vilnor_dll
