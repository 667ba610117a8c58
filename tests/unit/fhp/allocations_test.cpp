// A field of a request takes no memory of its own: the heap would be a large part of its cost.
#include <gtest/gtest.h>

#include "automation/date.h"
#include "db/connection_state.h"
#include "exchange/envelope.h"
#include "fhp/application_form.h"
#include "fhp/application_records.h"
#include "fhp/cost_estimate.h"
#include "fhp/identity.h"
#include "unit/fhp/counted_heap.h"
#include "unit/fhp/fixture.h"

namespace fhp {
namespace {

class RequestMemory : public FhpFixture {
 protected:
  // An application with every field, and as many teeth and rows.
  RequestMemory() {
    std::u16string teeth;
    for (int tooth = 11; tooth < 11 + kRows; ++tooth) {
      teeth += u"<" + automation::Decimal10(tooth) + u">Krona & bro, 304 305</11>";
      AddEstimateRow({{u"RateNo", 1000 + tooth}, {u"Amount", 12345.5}, {u"NoOf", 3}});
    }
    for (auto& [column, value] : application) {
      value = value.IsNull() ? Value(teeth) : value;
    }
    for (const auto* flag :
         {u"Inlay", u"Orthodontics", u"Par16", u"IncreasedComp", u"Aids", u"TimeCharge", u"Implant",
          u"TwoStepTrial", u"Voluntary", u"Compl", u"LAF", u"HighExpCover", u"LSP", u"NoOfXRay",
          u"NoOfOPG", u"NoOfModels", u"NoOfPhoto", u"NoOfCertificate", u"EstimateOfCost"}) {
      application[flag] = 1;
    }
    UseOlderPatient();
  }

  static constexpr int kRows = 40;
};

TEST_F(RequestMemory, WholeDocumentTakesFewerThanTwentyAllocations) {
  Script();
  db::RenewGDB();
  ApplicationRecords records = ReadApplicationRecords(8);
  db::ReleaseGDB();
  long taken = 0;
  const long before = Allocations();
  const exchange::AnsweredRequest file(exchange::RequestKind::NewFHP, 8, exchangeDirectory);
  file.Write("NewCase", {UserDefData({5, 6, 7, 8}, records.application)},
             [&](exchange::RequestDocument& document) {
               document.Add("Title", {CaseTitle(records)});
               AddApplicationForm(document, records);
               AddCostEstimate(document, records);
               taken = Allocations() - before;
             });
  EXPECT_LT(taken, 20);
  const std::string document = File();
  EXPECT_NE(document.find("<FormItemKey>edt50beh</FormItemKey>"), std::string::npos);
  EXPECT_NE(document.find("<FormItemKey>edtBer40Summa</FormItemKey>"), std::string::npos);
}

}  // namespace
}  // namespace fhp
