// The component's automation interfaces, in the C++ form that the type library's compiler makes.
#pragma once

#include "com/com_object.h"
// Must follow win32.h.
#include "typelib/Vilnor.h"

namespace com {

template <>
struct BaseOf<_BVilnor> : Extends<IDispatch> {};
template <>
struct BaseOf<_DBVilnor> : Extends<IDispatch> {};

}  // namespace com

namespace vilnor_dll {

// The source of errors that name none.
inline constexpr const wchar_t* kSource = L"Vilnor";

}  // namespace vilnor_dll
