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
    const AnsweredRequest file(RequestKind::NewCase, request.pid, vilnorOutputPath);
    return file.Write(
        "NewCase",
        {Decimal10(request.pid), u"&", Decimal10(request.bid), u"&", Decimal10(request.rid)},
        [&](RequestDocument& document) {
          document.Add("Title", {u"(", request.ssn, u")"});
          document.Add("PatientFirstName", {request.firstName});
          document.Add("PatientLastName", {request.lastName});
          document.Add("PatientId", {request.ssn});
        });
  });
}

Attempt<std::u16string> WriteExistCase(std::int32_t vilnorId,
                                       const std::u16string& vilnorOutputPath) {
  return util::Try(u" in WriteExistCase", kBVilnorIcon, [&] {
    // Kept: after a failed lookup the link program opens without a case.
    const std::u16string caseId =
        db::WithGDB([&](auto& gDB) { return gDB.GetCaseIdByVilnorId(vilnorId); });
    const AnsweredRequest file(RequestKind::ExistCase, vilnorId, vilnorOutputPath);
    return file.Write("Case", {caseId},
                      [&](RequestDocument& document) { document.Add("CaseId", {caseId}); });
  });
}

Attempt<std::u16string> WriteSearchPatient(const std::u16string& ssn,
                                           const std::u16string& vilnorOutputPath) {
  return util::Try(u" in WriteSearchPatient", kBVilnorIcon, [&] {
    RequestDocument document;
    document.Add("SearchCase", [&] { document.Add("PatientId", {ssn}); });
    return Save(document, ExchangeFile(vilnorOutputPath, kSearchWord, ssn));
  });
}

}  // namespace exchange
