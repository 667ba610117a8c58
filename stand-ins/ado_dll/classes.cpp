#include "ado_dll/classes.h"

#include "ado_dll/connection_object.h"
#include "ado_dll/recordset_object.h"

namespace ado_dll {
namespace {

constexpr std::array<com::ClassEntry, 2> kClasses = {
    com::ClassEntry{
        .id = {0x00000514, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x6D, 0x2E, 0xA4}},
        .name = L"ADO Connection over ODBC",
        .programId = L"ADODB.Connection.2.8",
        .newestProgramId = L"ADODB.Connection",
        .create = com::Create<ConnectionObject>},
    com::ClassEntry{
        .id = {0x00000535, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x6D, 0x2E, 0xA4}},
        .name = L"ADO Recordset over ODBC",
        .programId = L"ADODB.Recordset.2.8",
        .newestProgramId = L"ADODB.Recordset",
        .create = com::Create<RecordsetObject>},
};

}  // namespace

const std::array<com::ClassEntry, 2>& Classes() {
  return kClasses;
}

}  // namespace ado_dll
