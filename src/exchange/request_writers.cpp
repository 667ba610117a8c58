#include "exchange/request_writers.h"

#include "automation/text.h"
#include "db/connection_state.h"
#include "exchange/envelope.h"
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
    AnsweredRequest file(RequestKind::NewCase, request.pid, vilnorOutputPath);
    Element& newCase = file.Add(u"NewCase", Decimal10(request.pid) + u"&" + Decimal10(request.bid) +
                                                u"&" + Decimal10(request.rid));
    newCase.Add(u"Title", u"(" + request.ssn + u")");
    newCase.Add(u"PatientFirstName", request.firstName);
    newCase.Add(u"PatientLastName", request.lastName);
    newCase.Add(u"PatientId", request.ssn);
    return file.Save();
  });
}

Attempt<std::u16string> WriteExistCase(std::int32_t vilnorId,
                                       const std::u16string& vilnorOutputPath) {
  return util::Try(u" in WriteExistCase", kBVilnorIcon, [&] {
    // Kept: after a failed lookup the link program opens without a case.
    const std::u16string caseId =
        db::WithGDB([&](auto& gDB) { return gDB.GetCaseIdByVilnorId(vilnorId); });
    AnsweredRequest file(RequestKind::ExistCase, vilnorId, vilnorOutputPath);
    file.Add(u"Case", caseId).Add(u"CaseId", caseId);
    return file.Save();
  });
}

Attempt<std::u16string> WriteSearchPatient(const std::u16string& ssn,
                                           const std::u16string& vilnorOutputPath) {
  return util::Try(u" in WriteSearchPatient", kBVilnorIcon, [&] {
    Element envelope = NewEnvelope();
    envelope.Add(u"SearchCase").Add(u"PatientId", ssn);
    return Save(envelope, ExchangeFile(vilnorOutputPath, kSearchWord, ssn));
  });
}

}  // namespace exchange
