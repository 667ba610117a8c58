// The objects with which a script reaches the practice's registry entries, exchange folder and
// database.
#pragma once

#include <string>

#include "windows/computer.h"
#include "windows/late_bound.h"

namespace benchmarks {

// "Path" of a key under SOFTWARE of the machine.
std::u16string RegisteredPath(const LateBound& shell, const std::u16string& key);
std::u16string ExchangeFolder(const LateBound& shell);

LateBound Connect(const Computer& computer);
// As the component opens most of its queries.
LateBound Query(const LateBound& connection, const std::u16string& statement);
bool AtEnd(const LateBound& rows);
// rows.Fields("name").Value: unchanged, as text, and as the text of a number.
automation::Value Field(const LateBound& rows, const char16_t* name);
std::u16string TextField(const LateBound& rows, const char16_t* name);
std::u16string KeyField(const LateBound& rows, const char16_t* name);

}  // namespace benchmarks
