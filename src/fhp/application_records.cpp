#include "fhp/application_records.h"

#include "db/connection_state.h"
#include "fhp/estimate_decision.h"
#include "fhp/record_columns.h"
#include "platform/conversions.h"
#include "util/ssn.h"

namespace fhp {
namespace {

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
