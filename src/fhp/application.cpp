#include "fhp/application.h"

#include "db/connection_state.h"
#include "exchange/envelope.h"
#include "fhp/application_form.h"
#include "fhp/application_records.h"
#include "fhp/cost_estimate.h"
#include "fhp/estimate_decision.h"
#include "fhp/identity.h"
#include "util/error_trap.h"

namespace fhp {
namespace {

using exchange::RequestDocument;

void AddPatient(RequestDocument& document, const ApplicationRecords& records) {
  document.Add("Title", {CaseTitle(records)});
  document.Add("PatientFirstName", {records.patient.Text(u"fornavn")});
  document.Add("PatientLastName", {records.patient.Text(u"Navn")});
  document.Add("PatientId", {records.personNumber});
}

void AddContribution(RequestDocument& document, ApplicationRecords& records) {
  document.Add("Contribution", [&] {
    document.Add("Heading", {});
    document.Add("Statement", {});
    AddApplicationForm(document, records);
    if (records.includeEstimate) {
      AddCostEstimate(document, records);
    }
  });
}

void AddParticipant(RequestDocument& document, const db::GDBUse& database, bool includeEstimate) {
  const std::u16string user = database->GetVilnorUserByCode1(ParticipantCode(includeEstimate));
  if (!user.empty()) {
    document.Add("Participant", [&] { document.Add("UserId", {user}); });
  }
}

}  // namespace

util::Attempt<std::u16string> WriteNewFHP(std::int32_t pid, std::int32_t bid, std::int32_t rid,
                                          std::int32_t fhpId,
                                          const std::u16string& vilnorOutputPath) {
  return util::Try(u" in WriteNewFHP", util::kBVilnorIcon, [&] {
    const db::GDBUse database;
    ApplicationRecords records = ReadApplicationRecords(fhpId);
    const exchange::AnsweredRequest file(exchange::RequestKind::NewFHP, fhpId, vilnorOutputPath);
    return file.Write("NewCase", {UserDefData({pid, bid, rid, fhpId}, records.application)},
                      [&](RequestDocument& document) {
                        AddPatient(document, records);
                        AddContribution(document, records);
                        AddParticipant(document, database, records.includeEstimate);
                      });
  });
}

}  // namespace fhp
