#pragma once

namespace ado_dll {

// Whether the system is Wine. On real Windows this DLL offers no classes and registers nothing: it
// would replace ADO for every program there.
bool RunsInWine();

}  // namespace ado_dll
