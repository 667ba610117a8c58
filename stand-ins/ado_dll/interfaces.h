// ADO's interfaces, compiled from Wine's description of them.
#pragma once

#include "com/dual_object.h"
// Must follow win32.h.
#include <ado_interfaces.h>

namespace com {

template <>
struct BaseOf<_ADO> : Extends<IDispatch> {};
template <>
struct BaseOf<Connection15> : Extends<_ADO> {};
template <>
struct BaseOf<_Connection> : Extends<Connection15> {};
template <>
struct BaseOf<Recordset15> : Extends<_ADO> {};
template <>
struct BaseOf<Recordset20> : Extends<Recordset15> {};
template <>
struct BaseOf<Recordset21> : Extends<Recordset20> {};
template <>
struct BaseOf<_Recordset> : Extends<Recordset21> {};
template <>
struct BaseOf<_Collection> : Extends<IDispatch> {};
template <>
struct BaseOf<Fields15> : Extends<_Collection> {};
template <>
struct BaseOf<Fields20> : Extends<Fields15> {};
template <>
struct BaseOf<Fields> : Extends<Fields20> {};
template <>
struct BaseOf<Field20> : Extends<_ADO> {};
template <>
struct BaseOf<Field> : Extends<Field20> {};
template <>
struct BaseOf<Errors> : Extends<_Collection> {};
template <>
struct BaseOf<Error> : Extends<IDispatch> {};

}  // namespace com
