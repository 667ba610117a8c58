#include "native/application.h"

#include <numeric>

#include "automation/text.h"
#include "db/db_vilnor.h"
#include "exchange/envelope.h"
#include "fhp/application_form.h"
#include "fhp/cost_estimate.h"

namespace benchmarks {
namespace {

using automation::Decimal10;

const std::u16string kKey = Decimal10(kFullApplication);

void PutRowsThere(const Clinic& clinic, int rows) {
  clinic.Run(u"DELETE FROM SEPreRequestEstimateRows WHERE SEPreRequest_ID = " + kKey);
  for (int row = 0; row < rows; ++row) {
    clinic.Run(
        u"INSERT INTO SEPreRequestEstimateRows (SEPreRequest_ID, RateNo, InternalCode, Debit, "
        u"IncrComp, NoOf, Amount, RegDate) VALUES (" +
        kKey + u"," + Decimal10(1001 + row) + u",'K1','Ä',FALSE,1,3975.5,'2026-11-16 10:20:00')");
  }
}

void PutTeethThere(const Clinic& clinic, int teeth) {
  std::u16string runs;
  for (int tooth = 0; tooth < teeth; ++tooth) {
    const std::u16string number = Decimal10((tooth % 4 + 1) * 10 + tooth % 8 + 1);
    runs.append(u"<" + number + u">304 305</" + number + u">");
  }
  clinic.Run(u"UPDATE SEPrerequest SET PlanTreatm = '" + runs + u"', Caries = '" + runs +
             u"' WHERE SEPrerequestID = " + kKey);
}

}  // namespace

Application::Application(Clinic& clinic, int rows) {
  PutRowsThere(clinic, rows);
  PutTeethThere(clinic, rows);
  const Clinic::Inside inside(clinic);
  db::RenewGDB();
  records_ = fhp::ReadApplicationRecords(kFullApplication);
  rows_ = db::GDB()->GetPreRequestCostByFHPid(kFullApplication);
  db::ReleaseGDB();
}

exchange::Element Application::Build() {
  records_.estimateRows = fhp::Record(rows_->Clone(platform::LockType::Unspecified));
  exchange::Element envelope = exchange::NewEnvelope();
  exchange::Element& contribution = envelope.Add(u"NewCase").Add(u"Contribution");
  fhp::AddApplicationForm(contribution, records_);
  fhp::AddCostEstimate(contribution, records_);
  return envelope;
}

std::size_t CountFields(const exchange::Element& document) {
  const auto& children = document.children();
  return std::accumulate(
      children.begin(), children.end(), std::size_t{document.name() == u"FormItem"},
      [](std::size_t fields, const auto& child) { return fields + CountFields(child); });
}

}  // namespace benchmarks
