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

using exchange::Element;

void AddPatient(Element& newCase, const ApplicationRecords& records) {
  newCase.Add(u"Title", CaseTitle(records));
  newCase.Add(u"PatientFirstName", records.patient.Text(u"fornavn"));
  newCase.Add(u"PatientLastName", records.patient.Text(u"Navn"));
  newCase.Add(u"PatientId", records.personNumber);
}

void AddContribution(Element& newCase, ApplicationRecords& records) {
  Element& contribution = newCase.Add(u"Contribution");
  contribution.Add(u"Heading");
  contribution.Add(u"Statement");
  AddApplicationForm(contribution, records);
  if (records.includeEstimate) {
    AddCostEstimate(contribution, records);
  }
}

void AddParticipant(Element& newCase, const db::GDBUse& database, bool includeEstimate) {
  std::u16string user = database->GetVilnorUserByCode1(ParticipantCode(includeEstimate));
  if (!user.empty()) {
    newCase.Add(u"Participant").Add(u"UserId", std::move(user));
  }
}

}  // namespace

util::Attempt<std::u16string> WriteNewFHP(std::int32_t pid, std::int32_t bid, std::int32_t rid,
                                          std::int32_t fhpId,
                                          const std::u16string& vilnorOutputPath) {
  return util::Try(u" in WriteNewFHP", util::kBVilnorIcon, [&] {
    const db::GDBUse database;
    ApplicationRecords records = ReadApplicationRecords(fhpId);
    exchange::AnsweredRequest file(exchange::RequestKind::NewFHP, fhpId, vilnorOutputPath);
    Element& newCase =
        file.Add(u"NewCase", UserDefData({pid, bid, rid, fhpId}, records.application));
    AddPatient(newCase, records);
    AddContribution(newCase, records);
    AddParticipant(newCase, database, records.includeEstimate);
    return file.Save();
  });
}

}  // namespace fhp
