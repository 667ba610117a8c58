// Calls by name, as scripts and late-bound hosts make them.
#pragma once

#include "com/win32.h"

namespace com {

// IDispatch::Invoke on an object's dual interface, which `typeInfo` describes. It adds what the
// system's own implementation does not do on every system:
// - an argument by reference may be given as a value, as a script's variable (a VARIANT by
//   reference) or as a variable of another type; it is converted for the call, and a changed result
//   is stored back into the variable in its own type;
// - an argument left out gets the default that the type library names, by reference too.
// DISP_E_MEMBERNOTFOUND, DISP_E_BADPARAMCOUNT for too many arguments, DISP_E_TYPEMISMATCH or
// DISP_E_OVERFLOW for one that cannot be converted.
HRESULT InvokeMember(ITypeInfo& typeInfo, IDispatch& object, DISPID member, WORD flags,
                     const DISPPARAMS& arguments, VARIANT* result, EXCEPINFO* exception,
                     UINT* argumentError);

}  // namespace com
