#include "ado_dll/class_table.h"

#include "ado_dll/connection_object.h"
#include "ado_dll/method.h"
#include "ado_dll/recordset_object.h"

namespace ado_dll {
namespace {

template <class Object>
HRESULT Create(REFIID interfaceId, void** object) {
  HRESULT found = S_OK;
  const HRESULT made = Method([&] { found = Make<Object>()->QueryInterface(interfaceId, object); });
  return FAILED(made) ? made : found;
}

constexpr std::array<ComClass, 2> kClasses = {
    ComClass{{0x00000514, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x6D, 0x2E, 0xA4}},
             L"ADO Connection over ODBC",
             L"ADODB.Connection.2.8",
             L"ADODB.Connection",
             Create<ConnectionObject>},
    ComClass{{0x00000535, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x6D, 0x2E, 0xA4}},
             L"ADO Recordset over ODBC",
             L"ADODB.Recordset.2.8",
             L"ADODB.Recordset",
             Create<RecordsetObject>},
};

}  // namespace

const std::array<ComClass, 2>& Classes() {
  return kClasses;
}

}  // namespace ado_dll
