#include "exchange/request_writers.h"

#include "automation/text.h"
#include "exchange/envelope.h"
#include "exchange/linked_case.h"
#include "util/error_trap.h"

namespace exchange {
namespace {

using automation::Decimal10;
using util::Attempt;
using util::kBVilnorIcon;

}  // namespace

Attempt<std::u16string> WriteNewCase(const NewCaseRequest& request,
                                     const std::u16string& vilnorOutputPath) {
  return util::Try(u" in WriteNewCase", kBVilnorIcon, [&] {
    const std::u16string pid = Decimal10(request.pid);
    PendingResultPath() = ExchangeFile(vilnorOutputPath, u"\\OutNewCase", pid);
    Element envelope = NewEnvelope();
    Element& newCase = envelope.Add(u"NewCase");
    AddResultBlock(newCase, {.resultPath = PendingResultPath(),
                             .userDefData = pid + u"&" + Decimal10(request.bid) + u"&" +
                                            Decimal10(request.rid),
                             .message = ResultMessage::NewCase,
                             .key = request.pid});
    newCase.Add(u"Title", u"(" + request.ssn + u")");
    newCase.Add(u"PatientFirstName", request.firstName);
    newCase.Add(u"PatientLastName", request.lastName);
    newCase.Add(u"PatientId", request.ssn);
    return SaveExpecting(PendingResultPath(), envelope,
                         ExchangeFile(vilnorOutputPath, u"\\InNewCase", pid));
  });
}

Attempt<std::u16string> WriteExistCase(std::int32_t vilnorId,
                                       const std::u16string& vilnorOutputPath) {
  return util::Try(u" in WriteExistCase", kBVilnorIcon, [&] {
    // Kept: a lookup that failed opens the link program without a case.
    const std::u16string caseId = LinkedCaseId(vilnorId).OrEmpty();
    const std::u16string key = Decimal10(vilnorId);
    PendingResultPath() = ExchangeFile(vilnorOutputPath, u"\\OutExistCase", key);
    Element envelope = NewEnvelope();
    Element& existing = envelope.Add(u"Case");
    AddResultBlock(existing, {.resultPath = PendingResultPath(),
                              .userDefData = caseId,
                              .message = ResultMessage::ExistCase,
                              .key = vilnorId});
    existing.Add(u"CaseId", caseId);
    return SaveExpecting(PendingResultPath(), envelope,
                         ExchangeFile(vilnorOutputPath, u"\\InExistCase", key));
  });
}

Attempt<std::u16string> WriteSearchPatient(const std::u16string& ssn,
                                           const std::u16string& vilnorOutputPath) {
  return util::Try(u" in WriteSearchPatient", kBVilnorIcon, [&] {
    Element envelope = NewEnvelope();
    envelope.Add(u"SearchCase").Add(u"PatientId", ssn);
    return Save(envelope, ExchangeFile(vilnorOutputPath, u"\\Search", ssn));
  });
}

}  // namespace exchange
