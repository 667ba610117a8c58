// Null in each column in turn, on a full application with its estimate. A column that the file
// needs ends in the box; any other leaves out only its own fields.
#include <algorithm>
#include <gmock/gmock.h>
#include <ostream>
#include <set>

#include "unit/fhp/fixture.h"

namespace fhp {
namespace {

using Texts = std::vector<std::u16string>;

enum class Source { Application, Clinician, Provider, Patient, EstimateRow };

struct Column {
  Source source;
  std::u16string name;
  // The fields that are left out without it.
  std::set<std::string> keys;
};

void PrintTo(const Column& column, std::ostream* out) {
  *out << automation::ToUtf8(column.name);
}

std::string NameOf(const testing::TestParamInfo<Column>& instance) {
  constexpr const char* kSources[] = {"Application", "Clinician", "Provider", "Patient",
                                      "EstimateRow"};
  return std::string(kSources[static_cast<std::size_t>(instance.param.source)]) + "_" +
         automation::ToUtf8(instance.param.name);
}

class NullColumn : public FhpFixture, public testing::WithParamInterface<Column> {
 protected:
  NullColumn() {
    for (auto& [column, value] : application) {
      value = value.IsNull() ? Value(u"<11>1</11>") : value;
    }
    for (const auto* flag :
         {u"Inlay", u"Orthodontics", u"Par16", u"IncreasedComp", u"Aids", u"TimeCharge", u"Implant",
          u"TwoStepTrial", u"Voluntary", u"Compl", u"LAF", u"HighExpCover", u"LSP", u"NoOfXRay",
          u"NoOfOPG", u"NoOfModels", u"NoOfPhoto", u"NoOfCertificate", u"EstimateOfCost"}) {
      application[flag] = 1;
    }
    provider[u"levno"] = u"L1";
    provider[u"tlfPrivat"] = u"08-1";
    UseOlderPatient();
    AddEstimateRow();
  }

  Row& RowOf(Source source) {
    switch (source) {
      case Source::Clinician:
        return clinician;
      case Source::Provider:
        return provider;
      case Source::Patient:
        return patient;
      case Source::EstimateRow:
        return estimateRows.front();
      case Source::Application:
        break;
    }
    return application;
  }

  std::vector<std::string> AllKeys() {
    auto keys = Keys("108692");
    const auto estimate = Keys("108696");
    keys.insert(keys.end(), estimate.begin(), estimate.end());
    return keys;
  }

  void Nullify() {
    const Row& row = RowOf(GetParam().source);
    ASSERT_TRUE(row.contains(GetParam().name));
    RowOf(GetParam().source)[GetParam().name] = Null();
  }
};

class NeededColumn : public NullColumn {};
class SkippedColumn : public NullColumn {};

TEST_P(NeededColumn, NullInANeededColumnEndsInTheBoxAndLeavesNoFile) {
  Nullify();
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(Boxes(), Texts{u"94 Invalid use of Null in WriteNewFHP"});
  EXPECT_FALSE(Exists(u"InNewFHP8.xml"));
}

TEST_P(NeededColumn, NullInANeededColumnLeavesAnEarlierFileUnchanged) {
  Put(u"InNewFHP8.xml", "earlier");
  Nullify();
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(File(), "earlier");
}

TEST_P(SkippedColumn, NullInASkippedColumnLeavesOutOnlyItsOwnFields) {
  auto expected = AllKeys();
  Nullify();
  std::erase_if(expected, [](const auto& key) { return GetParam().keys.contains(key); });
  EXPECT_EQ(AllKeys(), expected);
  EXPECT_TRUE(Boxes().empty());
}

INSTANTIATE_TEST_SUITE_P(
    Columns, NeededColumn,
    testing::Values(
        Column{Source::Application, u"BID", {}}, Column{Source::Application, u"RID", {}},
        Column{Source::Application, u"PID", {}}, Column{Source::Application, u"RegDate", {}},
        Column{Source::Application, u"CaseNo", {}}, Column{Source::Provider, u"Navn", {}},
        Column{Source::Provider, u"postnr", {}}, Column{Source::Provider, u"organizationNo", {}},
        Column{Source::Patient, u"Fornavn", {}}, Column{Source::Patient, u"Navn", {}},
        Column{Source::EstimateRow, u"RegDate", {}}, Column{Source::Patient, u"fDato", {}}),
    NameOf);

const std::set<std::string> kRowFields = {"edtBer1Atgard", "edtBer1Antal", "edtBer1Pris",
                                          "edtBer1Summa"};

INSTANTIATE_TEST_SUITE_P(
    Columns, SkippedColumn,
    testing::Values(
        Column{Source::Application, u"Inlay", {"cbProt"}},
        Column{Source::Application, u"Orthodontics", {"cbTandregl"}},
        Column{Source::Application, u"Par16", {"cbParagraf16"}},
        Column{Source::Application, u"IncreasedComp", {"cbForhojdErsattn"}},
        Column{Source::Application, u"Aids", {"cbHjalpmedel"}},
        Column{Source::Application, u"TimeCharge", {"cbTidsdeb"}},
        Column{Source::Application, u"Implant", {"cbImplantat"}},
        Column{Source::Application, u"TwoStepTrial", {"cb2StegsProvn"}},
        Column{Source::Application, u"Voluntary", {"cbFrivillig"}},
        Column{Source::Application, u"Compl", {"cbKompl"}},
        Column{Source::Application, u"LAF", {"cbLAF"}},
        Column{Source::Application, u"HighExpCover", {"cbHogkostnskydd"}},
        Column{Source::Application, u"LSP", {"cbLSP"}},
        Column{Source::Application, u"NoOfXRay", {"edtAntalRtg"}},
        Column{Source::Application, u"NoOfOPG", {"edtAntalOPG"}},
        Column{Source::Application, u"SentBy", {"edtVia"}},
        Column{Source::Application, u"NoOfModels", {"edtAntalModeller"}},
        Column{Source::Application, u"NoOfPhoto", {"edtAntalFoto"}},
        Column{Source::Application, u"NoOfCertificate", {"edtAntalIntyg"}},
        Column{Source::Application, u"EstimateOfCost", {"cbKostnadsber"}},
        Column{Source::Application, u"PrevDentalCare", {"edt11foregtv"}},
        Column{Source::Application, u"Caries", {"edt11karies"}},
        Column{Source::Application, u"perio", {"edt11paroddiagn"}},
        Column{Source::Application, u"Apikal", {"edt11apikalaforandr"}},
        Column{Source::Application, u"Anamnes", {"memAnamnes"}},
        Column{Source::Application, u"PlanTreatm", {"edt11beh"}},
        Column{Source::Application, u"TimeEstimate81", {"edtBerTidsatgang81"}},
        Column{Source::Application, u"TimeEstimateDentalTechnic", {"edtBerTidsatgangTT"}},
        Column{Source::Application, u"PlanTreatmUJaw", {"edtUJbeh"}},
        Column{Source::Application, u"PlanTreatmLJaw", {"edtLJbeh"}},
        Column{Source::Application, u"Notes", {"memUpplysningar"}},
        Column{Source::Clinician, u"Fornavn", {}}, Column{Source::Clinician, u"Navn", {}},
        Column{Source::Provider, u"adr1", {}}, Column{Source::Provider, u"adr2", {}},
        Column{Source::Provider, u"tlfPrivat", {}},
        Column{Source::Provider, u"levno", {"edtVardgivareLeverantorNr"}},
        Column{Source::Patient, u"PersNr", {}}, Column{Source::EstimateRow, u"SelectNoOf", {}},
        Column{Source::EstimateRow, u"RateNo", kRowFields},
        Column{Source::EstimateRow, u"InternalCode", {}},
        Column{Source::EstimateRow, u"Debit", kRowFields},
        Column{Source::EstimateRow, u"IncrComp", {}}, Column{Source::EstimateRow, u"NoOf", {}},
        Column{Source::EstimateRow, u"Amount", {}}),
    NameOf);

class NullLookup : public FhpFixture {};

TEST_F(NullLookup, TownWithoutANameIsReportedByTheLookupsAndLeavesNoFile) {
  city[u"Poststedsnavn"] = Null();
  EXPECT_EQ(Write(), u"");
  ASSERT_FALSE(Boxes().empty());
  EXPECT_EQ(Boxes().front(), u"94 Invalid use of Null in GetCityByPostnr");
  EXPECT_EQ(Boxes().back(), u"91 Object variable or With block variable not set in WriteNewFHP");
  EXPECT_FALSE(Exists(u"InNewFHP8.xml"));
}

TEST_F(NullLookup, ParticipantWithoutANameIsReportedByTheLookupAndLeftOut) {
  database.Answer(u"SELECT UserName from VilnorPasient where PID = 132000",
                  {{u"UserName"}, {{Null()}}});
  EXPECT_NE(Write(), u"");
  EXPECT_EQ(Boxes(), Texts{u"94 Invalid use of Null in GetVilnorUserByPID"});
  EXPECT_EQ(File().find("<Participant>"), std::string::npos);
}

TEST_F(NullLookup, MissingBirthDateWithoutEstimateRowsEndsInTheBox) {
  patient[u"fDato"] = Null();
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(Boxes(), Texts{u"94 Invalid use of Null in WriteNewFHP"});
  EXPECT_FALSE(Exists(u"InNewFHP8.xml"));
}

TEST_F(NullLookup, MissingPersNrLeavesTheDateAndItsSeparator) {
  patient[u"PersNr"] = Null();
  EXPECT_THAT(ValueOf("edtPatientPersonNr"), testing::Optional(std::string("19700315-")));
}

}  // namespace
}  // namespace fhp
