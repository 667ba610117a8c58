#include "fhp/application_records.h"

#include <array>
#include <string_view>

#include "db/connection_state.h"
#include "fhp/estimate_decision.h"
#include "platform/conversions.h"
#include "util/ssn.h"

namespace fhp {
namespace {

// The columns that the forms and this file read.
constexpr auto kApplicationColumns =
    std::to_array<std::u16string_view>({u"BID",
                                        u"RID",
                                        u"PID",
                                        u"RegDate",
                                        u"CaseNo",
                                        u"Inlay",
                                        u"Orthodontics",
                                        u"Par16",
                                        u"IncreasedComp",
                                        u"Aids",
                                        u"TimeCharge",
                                        u"Implant",
                                        u"TwoStepTrial",
                                        u"Voluntary",
                                        u"Compl",
                                        u"LAF",
                                        u"HighExpCover",
                                        u"LSP",
                                        u"NoOfXRay",
                                        u"NoOfOPG",
                                        u"SentBy",
                                        u"NoOfModels",
                                        u"NoOfPhoto",
                                        u"NoOfCertificate",
                                        u"EstimateOfCost",
                                        u"PrevDentalCare",
                                        u"Caries",
                                        u"perio",
                                        u"Apikal",
                                        u"Anamnes",
                                        u"PlanTreatm",
                                        u"TimeEstimate81",
                                        u"TimeEstimateDentalTechnic",
                                        u"PlanTreatmUJaw",
                                        u"PlanTreatmLJaw",
                                        u"Notes"});
constexpr auto kClinicianColumns = std::to_array<std::u16string_view>({u"fornavn", u"Navn"});
constexpr auto kProviderColumns = std::to_array<std::u16string_view>(
    {u"Navn", u"Adr1", u"Adr2", u"Postnr", u"OrganizationNo", u"tlfPrivat", u"LevNo"});
constexpr auto kPatientColumns =
    std::to_array<std::u16string_view>({u"fornavn", u"Navn", u"FDato", u"PersNr"});
constexpr auto kEstimateColumns = std::to_array<std::u16string_view>(
    {u"SelectNoOf", u"RateNo", u"Debit", u"IncrComp", u"NoOf", u"Amount", u"RegDate"});

std::int32_t Key(const Record& record, std::u16string_view column) {
  return platform::ToInt32(record[column]);
}

bool EstimateApplies(const ApplicationRecords& records, std::int32_t fhpId) {
  return db::GDB()->PreRequestCostExists(fhpId) &&
         IncludesEstimate(platform::ToDate(records.application[u"RegDate"]),
                          platform::ToDate(records.patient[u"FDato"]));
}

}  // namespace

ApplicationRecords ReadApplicationRecords(std::int32_t fhpId) {
  ApplicationRecords records;
  records.application = Record(db::GDB()->GetFHPById(fhpId), kApplicationColumns);
  const Record& application = records.application;
  records.clinician = Record(db::GDB()->GetBIDById(Key(application, u"BID")), kClinicianColumns);
  records.provider = Record(db::GDB()->GetRIDById(Key(application, u"RID")), kProviderColumns);
  records.city = db::GDB()->GetCityByPostnr(Key(records.provider, u"Postnr"));
  records.patient = Record(db::GDB()->GetPIDById(Key(application, u"PID")), kPatientColumns);
  records.includeEstimate = EstimateApplies(records, fhpId);
  if (records.includeEstimate) {
    const auto rows = db::GDB()->GetPreRequestCostByFHPid(fhpId);
    records.estimateRows = Record(rows, kEstimateColumns);
    if (rows) {
      rows->Close();
    }
  }
  records.personNumber =
      util::MakeSSN(platform::ToDate(records.patient[u"FDato"]), records.patient[u"PersNr"], true);
  return records;
}

}  // namespace fhp
