#include <array>

#include "com/com_error.h"
#include "operations.h"
#include "results.h"

namespace sample_host {
namespace {

using com::Check;
using Database = _DBVilnor&;

void AddNewCase(Database database, Arguments& a) {
  Check(database.AddNewCase(a.Number(0), a.Number(1), a.Number(2), a.Text(3), a.Number(4),
                            a.Number(5), a.Number(6), a.Text(7), a.Text(8)));
}

// Operations that take one argument, a record's id, and return a recordset.
template <HRESULT (STDMETHODCALLTYPE _DBVilnor::*Lookup)(LONG*, IDispatch**)>
void PrintRecord(Database database, Arguments& a) {
  PrintRows([&](auto* result) { return (database.*Lookup)(a.Number(0), result); });
}

constexpr auto kOperations = std::to_array<Operation<_DBVilnor>>({
    {"DBVilnor.InitConnection", "",
     [](Database database, Arguments& /*a*/) { Check(database.InitConnection()); }},
    {"DBVilnor.DeleteFHP", "FHPId",
     [](Database database, Arguments& a) { Check(database.DeleteFHP(a.Number(0))); }},
    {"DBVilnor.DeleteCase", "CaseId$",
     [](Database database, Arguments& a) { Check(database.DeleteCase(a.Text(0))); }},
    {"DBVilnor.GetCaseIdByVilnorId", "VilnorId",
     [](Database database, Arguments& a) {
       PrintText([&](auto* r) { return database.GetCaseIdByVilnorId(a.Number(0), r); });
     }},
    {"DBVilnor.CaseExists", "FHPId CaseTypeId",
     [](Database database, Arguments& a) {
       PrintTruth([&](auto* r) { return database.CaseExists(a.Number(0), a.Number(1), r); });
     }},
    {"DBVilnor.CaseExistsPID", "PID CaseTypeId CaseId$",
     [](Database database, Arguments& a) {
       PrintTruth(
           [&](auto* r) { return database.CaseExistsPID(a.Number(0), a.Number(1), a.Text(2), r); });
     }},
    {"DBVilnor.GetFHPById", "FHPId", PrintRecord<&_DBVilnor::GetFHPById>},
    {"DBVilnor.GetVilnorIdByFHPId", "FHPId",
     [](Database database, Arguments& a) {
       PrintNumber([&](auto* r) { return database.GetVilnorIdByFHPId(a.Number(0), r); });
     }},
    {"DBVilnor.GetBIDById", "BID", PrintRecord<&_DBVilnor::GetBIDById>},
    {"DBVilnor.GetRIDById", "RID", PrintRecord<&_DBVilnor::GetRIDById>},
    {"DBVilnor.GetPIDById", "PID", PrintRecord<&_DBVilnor::GetPIDById>},
    {"DBVilnor.GetCityByPostnr", "Postnr",
     [](Database database, Arguments& a) {
       PrintText([&](auto* r) { return database.GetCityByPostnr(a.Number(0), r); });
     }},
    {"DBVilnor.PreRequestCostExists", "FHPId",
     [](Database database, Arguments& a) {
       PrintTruth([&](auto* r) { return database.PreRequestCostExists(a.Number(0), r); });
     }},
    {"DBVilnor.GetPreRequestCostByFHPid", "FHPId",
     PrintRecord<&_DBVilnor::GetPreRequestCostByFHPid>},
    {"DBVilnor.AddNewCase",
     "PID BID RID CaseId$ FHP_ID CaseTypeId StatusCode VilnorUser$ KestraCaseId$", AddNewCase},
    {"DBVilnor.UpdateCaseById", "VilnorId CaseId$ CaseStatus",
     [](Database database, Arguments& a) {
       Check(database.UpdateCaseById(a.Number(0), a.Text(1), a.Number(2)));
     }},
    {"DBVilnor.UpdateCase", "CaseId$ KestraId CaseStatus CaseTypeId",
     [](Database database, Arguments& a) {
       Check(database.UpdateCase(a.Text(0), a.Number(1), a.Number(2), a.Number(3)));
     }},
    {"DBVilnor.GetPatientByPID", "PID", PrintRecord<&_DBVilnor::GetPatientByPID>},
    {"DBVilnor.GetPatientSSNByPID", "PID", PrintRecord<&_DBVilnor::GetPatientSSNByPID>},
    {"DBVilnor.AddNewVilnorUser", "PID UserName$",
     [](Database database,
        Arguments& a) { Check(database.AddNewVilnorUser(a.Number(0), a.Text(1))); }},
    {"DBVilnor.UpdateVilnorUser", "PID UserName$",
     [](Database database,
        Arguments& a) { Check(database.UpdateVilnorUser(a.Number(0), a.Text(1))); }},
    {"DBVilnor.DeleteVilnorUser", "PID",
     [](Database database, Arguments& a) { Check(database.DeleteVilnorUser(a.Number(0))); }},
    {"DBVilnor.GetVilnorUserByPID", "PID",
     [](Database database,
        Arguments&
            a) { PrintText([&](auto* r) { return database.GetVilnorUserByPID(a.Number(0), r); }); }},
    {"DBVilnor.GetVilnorUserByCode1", "Code1",
     [](Database database,
        Arguments&
            a) { PrintText([&](auto* r) { return database.GetVilnorUserByCode1(a.Number(0), r); }); }},
});

}  // namespace

std::span<const Operation<_DBVilnor>> DatabaseOperations() {
  return kOperations;
}

}  // namespace sample_host
