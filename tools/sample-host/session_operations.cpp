#include <array>

#include "automation/text.h"
#include "com/bstr.h"
#include "com/com_error.h"
#include "console.h"
#include "operations.h"
#include "results.h"
#include "waiting_results.h"

namespace sample_host {
namespace {

using com::Check;
using Vilnor = _BVilnor&;

constexpr UINT kPriorApprovalAnswer = 10001;
constexpr UINT kNewCaseAnswer = 10002;
constexpr UINT kExistingCaseAnswer = 10009;

void OkToSend(Vilnor vilnor, Arguments& a) {
  SHORT code = 0;
  BSTR text = nullptr;
  VARIANT_BOOL ok = VARIANT_FALSE;
  const HRESULT result = vilnor.OKToSend(a.Number(0), &code, &text, &ok);
  com::Bstr message;
  *message.Receive() = text;
  Check(result);
  PrintResult(ok);
  Print(u"ErrCode " + automation::Decimal10(code));
  Print(u"ErrMsg " + Quoted(message.Text()));
}

void WriteNewCase(Vilnor vilnor, Arguments& a) {
  PrintText([&](BSTR* path) {
    return vilnor.WriteNewCase(a.Number(0), a.Number(1), a.Number(2), a.Text(3), a.Text(4),
                               a.Text(5), *a.Text(6), path);
  });
}

constexpr auto kOperations = std::to_array<Operation<_BVilnor>>({
      {"new-case", "PID BID RID",
       [](Vilnor vilnor, Arguments& a) {
         Check(vilnor.OpenWithNewCase(a.Number(0), a.Number(1), a.Number(2)));
       },
       kNewCaseAnswer, 0},
      {"exist-case", "VilnorId",
       [](Vilnor vilnor, Arguments& a) { Check(vilnor.OpenExistCase(a.Number(0))); },
       kExistingCaseAnswer, 0},
      {"exist-fhp", "FHPId",
       [](Vilnor vilnor, Arguments& a) { Check(vilnor.OpenExistFHP(a.Number(0))); },
       kExistingCaseAnswer},
      {"search", "PID",
       [](Vilnor vilnor, Arguments& a) { Check(vilnor.OpenSearchPatient(a.Number(0))); }},
      {"new-fhp", "PID BID RID FHPId",
       [](Vilnor vilnor, Arguments& a) {
         Check(vilnor.OpenWithNewFHP(a.Number(0), a.Number(1), a.Number(2), a.Number(3)));
       },
       kPriorApprovalAnswer, 3},
      {"open", "", [](Vilnor vilnor, Arguments& /*a*/) { Check(vilnor.OpenVilnor()); }},
      {"fhp-exists", "FHPId",
       [](Vilnor vilnor, Arguments& a) {
         PrintTruth([&](auto* result) { return vilnor.FHPExists(a.Number(0), result); });
       }},
      {"ok-to-send", "FHPId", OkToSend},
      {"write-new-case", "PID BID RID SSN$ FirstName$ LastName$ VilnorOutputPath$", WriteNewCase,
       kNewCaseAnswer, 0},
      {"read-new-case", "PID",
       [](Vilnor vilnor, Arguments& a) { Check(vilnor.ReadNewCase(a.Number(0))); }},
      {"read-new-fhp", "FHPId",
       [](Vilnor vilnor, Arguments& a) { Check(vilnor.ReadNewFHP(a.Number(0))); }},
      {"read-exist-case", "VilnorId",
       [](Vilnor vilnor, Arguments& a) { Check(vilnor.ReadExistCase(a.Number(0))); }},
      {"read-waiting", "", [](Vilnor vilnor, Arguments& /*a*/) { ReadWaitingResults(vilnor); }},
      {"user-add", "PID UserName$",
       [](Vilnor vilnor, Arguments& a) { Check(vilnor.AddNewVilnorUser(a.Number(0), a.Text(1))); }},
      {"user-update", "PID UserName$",
       [](Vilnor vilnor, Arguments& a) { Check(vilnor.UpdateVilnorUser(a.Number(0), a.Text(1))); }},
      {"user-delete", "PID",
       [](Vilnor vilnor, Arguments& a) { Check(vilnor.DeleteVilnorUser(a.Number(0))); }},
      {"user-get", "PID",
       [](Vilnor vilnor, Arguments& a) {
         PrintText([&](auto* result) { return vilnor.GetVilnorUserByPID(a.Number(0), result); });
       }},
});

}  // namespace

std::span<const Operation<_BVilnor>> SessionOperations() {
  return kOperations;
}

}  // namespace sample_host
