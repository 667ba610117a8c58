#include "windows/script_objects.h"

#include "automation/text.h"
#include "platform/conversions.h"

namespace benchmarks {

using automation::Decimal10;
using automation::Value;
using platform::ToInt32;
using platform::ToText;

std::u16string RegisteredPath(const LateBound& shell, const std::u16string& key) {
  return ToText(shell.Get(L"RegRead", u"HKLM\\SOFTWARE\\" + key + u"\\Path"));
}

std::u16string ExchangeFolder(const LateBound& shell) {
  const std::u16string folder = RegisteredPath(shell, u"Kestra\\Kestra.Main.exe") + u"Vilnor";
  const auto files = LateBound::Create(L"Scripting.FileSystemObject");
  if (!platform::ToBool(files.Get(L"FolderExists", folder))) {
    files.Call(L"CreateFolder", folder);
  }
  return folder;
}

LateBound Connect(const Computer& computer) {
  auto connection = LateBound::Create(L"ADODB.Connection");
  connection.Call(L"Open", computer.connectionString());
  return connection;
}

LateBound Query(const LateBound& connection, const std::u16string& statement) {
  constexpr std::int32_t kClient = 3;
  constexpr std::int32_t kStatic = 3;
  constexpr std::int32_t kBatchOptimistic = 4;
  auto rows = LateBound::Create(L"ADODB.Recordset");
  rows.Put(L"CursorLocation", kClient);
  rows.Call(L"Open", statement, connection, kStatic, kBatchOptimistic);
  return rows;
}

bool AtEnd(const LateBound& rows) {
  return platform::ToBool(rows.Get(L"EOF"));
}

Value Field(const LateBound& rows, const char16_t* name) {
  return rows.Object(L"Fields", name).Get(L"Value");
}

std::u16string TextField(const LateBound& rows, const char16_t* name) {
  return ToText(Field(rows, name));
}

std::u16string KeyField(const LateBound& rows, const char16_t* name) {
  return Decimal10(ToInt32(Field(rows, name)));
}

}  // namespace benchmarks
