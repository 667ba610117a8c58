#pragma once

namespace ado_dll {

// Whether the system is Wine. On a real Windows this DLL offers nothing and registers nothing: it
// would take ADO's classes away from every program there.
bool RunsInWine();

}  // namespace ado_dll
