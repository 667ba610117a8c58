// DBVilnor's lookups in the host's tables.
#include "db/query.h"
#include "platform/conversions.h"

namespace db {
namespace {

// Kept as they are, with their doubled blanks and mixed casing: hosts' databases and their logs
// know these texts.
constexpr Lookup kGetFHPById = {u" in GetFHPById",
                                u"SELECT * FROM SEPrerequest WHERE SEPrerequestID = ", u"",
                                OpenMode::Static};
constexpr Lookup kGetBIDById = {
    u" in GetBIDById",
    u"SELECT Worker.ToothSystem, Worker.ID, Worker.RID, Pasient.Fornavn, Pasient.Navn, "
    u"Worker.ReseptID FROM Worker INNER JOIN Pasient ON Worker.IDArkiv = Pasient.ID "
    u"Where Worker.ID = ",
    u"", OpenMode::Static};
constexpr Lookup kGetRIDById = {
    u" in GetRIDById",
    u"Select pasient.Navn, pasient.adr1, pasient.adr2, pasient.postnr, pasient.organizationNo, "
    u"pasient.tlfPrivat, company.levno from pasient, company where company.idarkiv = pasient.id "
    u"and company.id = ",
    u"", OpenMode::Static};
constexpr Lookup kGetPIDById = {
    u" in GetPIDById", u"SELECT ID, Fornavn, Navn, fDato , PersNr FROM Pasient where ID = ", u"",
    OpenMode::Keyset};
constexpr Lookup kGetCityByPostnr = {
    u" in GetCityByPostnr", u"SELECT Poststedsnavn FROM Postadresseregister where Postnr = '", u"'",
    OpenMode::Keyset};
constexpr Lookup kPreRequestCostExists = {
    u" in PreRequestCostExists",
    u"SELECT COUNT(*) AS Antal FROM SEPrerequestEstimateRows WHERE SEPrerequest_ID = ", u"",
    OpenMode::Keyset};
constexpr Lookup kGetPreRequestCostByFHPid = {
    u" in GetPreRequestCostByFHPid",
    u"SELECT  Count(SEPreRequestEstimateRowsID) AS SelectNoOf, RateNo, InternalCode, Debit, "
    u"IncrComp, NoOf, Amount, RegDate FROM SEPreRequestEstimateRows WHERE SEPreRequest_ID = ",
    u" GROUP BY RateNo, Amount, InternalCode, Debit, IncrComp, NoOf, RegDate", OpenMode::Static};
constexpr Lookup kGetPatientByPID = {u" in GetPatientByPID",
                                     u"SELECT  fDato, PersNr,ForNavn,Navn from Pasient where ID = ",
                                     u"", OpenMode::Static};
constexpr Lookup kGetPatientSSNByPID = {u" in GetPatientSSNByPID",
                                        u"SELECT  fDato, PersNr from Pasient where ID = ", u"",
                                        OpenMode::Static};

}  // namespace

std::unique_ptr<platform::Recordset> DBVilnor::GetFHPById(std::int32_t fhpId) {
  return LookUp(kGetFHPById, fhpId, CloneOf);
}

std::unique_ptr<platform::Recordset> DBVilnor::GetBIDById(std::int32_t bid) {
  return LookUp(kGetBIDById, bid, CloneOf);
}

std::unique_ptr<platform::Recordset> DBVilnor::GetRIDById(std::int32_t rid) {
  return LookUp(kGetRIDById, rid, CloneOf);
}

std::unique_ptr<platform::Recordset> DBVilnor::GetPIDById(std::int32_t pid) {
  return LookUp(kGetPIDById, pid, CloneOf);
}

std::u16string DBVilnor::GetCityByPostnr(std::int32_t postnr) {
  return LookUp(kGetCityByPostnr, postnr,
                [](auto& town) { return TextField(town, u"Poststedsnavn"); });
}

bool DBVilnor::PreRequestCostExists(std::int32_t fhpId) {
  return LookUp(kPreRequestCostExists, fhpId,
                [](auto& count) { return platform::ToDouble(count.Field(u"Antal")) > 0; });
}

std::unique_ptr<platform::Recordset> DBVilnor::GetPreRequestCostByFHPid(std::int32_t fhpId) {
  return LookUp(kGetPreRequestCostByFHPid, fhpId, CloneOf);
}

std::unique_ptr<platform::Recordset> DBVilnor::GetPatientByPID(std::int32_t pid) {
  return LookUp(kGetPatientByPID, pid, CloneOf);
}

std::unique_ptr<platform::Recordset> DBVilnor::GetPatientSSNByPID(std::int32_t pid) {
  return LookUp(kGetPatientSSNByPID, pid, CloneOf);
}

}  // namespace db
