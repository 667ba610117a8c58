#include "native/application.h"

#include <utility>

#include "automation/text.h"
#include "db/db_vilnor.h"
#include "exchange/request_document.h"
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
  db::ReleaseGDB();
}

std::string Application::Build() {
  exchange::RequestDocument document;
  document.Add("NewCase", [&] {
    document.Add("Contribution", [&] {
      fhp::AddApplicationForm(document, records_);
      fhp::AddCostEstimate(document, records_);
    });
  });
  return std::string(document.Finish());
}

std::size_t CountFields(std::string_view document) {
  constexpr std::string_view kField = "<FormItem>";
  std::size_t fields = 0;
  for (std::size_t at = document.find(kField); at != std::string_view::npos;
       at = document.find(kField, at + 1)) {
    ++fields;
  }
  return fields;
}

}  // namespace benchmarks
