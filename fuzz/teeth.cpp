// Any bytes as a per-tooth column: scanned for the document, and checked before sending.
#include "fhp/send_check.h"
#include "fhp/tooth_scanner.h"
#include "fuzz/world.h"

namespace {

std::size_t CountRuns(std::u16string_view column, fhp::ScanRules rules) {
  fhp::ToothScanner scanner(column, rules);
  std::size_t runs = 0;
  for (auto run = scanner.Next(); run; run = scanner.Next()) {
    ++runs;
    for (const auto part : {run->tooth, run->text}) {
      fuzz::Require(part.empty() || (part.data() >= column.data() &&
                                     part.data() + part.size() <= column.data() + column.size()));
    }
  }
  return runs;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::u16string column = fuzz::Latin1(data, size);
  // Each run begins at its own "<".
  fuzz::Require(CountRuns(column, fhp::kDocumentScan) <= size);

  fuzz::World world;
  world.database.Answer(
      u"SELECT * FROM SEPrerequest WHERE SEPrerequestID = 7",
      {{u"PlanTreatm", u"PlanTreatmUJaw", u"PlanTreatmLJaw"}, {{column, column, column}}});
  std::int16_t code = -1;
  std::u16string message = u"kept";
  const bool fits = fhp::OKToSend(7, code, message);
  fuzz::Require(!fits || (code == 0 && message.empty()));
  fuzz::Require(fits || code == 100 || (code == -1 && world.dialogs.shown.size() == 1));
  return 0;
}
