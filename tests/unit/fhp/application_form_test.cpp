// Form "108692": which fields are written, with which values, in which order.
#include <gmock/gmock.h>

#include "automation/date.h"
#include "unit/fhp/fixture.h"

namespace fhp {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::Optional;
using testing::Pair;

constexpr const char* kForm = "108692";

// Every value of a flag or count that means "no".
const std::vector<Value> kNoValues = {Null(), false, 0, 0.0, std::int16_t{0}, u"0", u"False"};

struct Flag {
  const char* key;
  const char16_t* column;
};

constexpr auto kCheckBoxes = std::to_array<Flag>({{"cbProt", u"Inlay"},
                                                  {"cbTandregl", u"Orthodontics"},
                                                  {"cbParagraf16", u"Par16"},
                                                  {"cbForhojdErsattn", u"IncreasedComp"},
                                                  {"cbHjalpmedel", u"Aids"},
                                                  {"cbTidsdeb", u"TimeCharge"},
                                                  {"cbImplantat", u"Implant"},
                                                  {"cb2StegsProvn", u"TwoStepTrial"},
                                                  {"cbFrivillig", u"Voluntary"},
                                                  {"cbKompl", u"Compl"},
                                                  {"cbLAF", u"LAF"},
                                                  {"cbHogkostnskydd", u"HighExpCover"},
                                                  {"cbLSP", u"LSP"}});
constexpr auto kCounts = std::to_array<Flag>({{"edtAntalRtg", u"NoOfXRay"},
                                              {"edtAntalOPG", u"NoOfOPG"},
                                              {"edtAntalModeller", u"NoOfModels"},
                                              {"edtAntalFoto", u"NoOfPhoto"},
                                              {"edtAntalIntyg", u"NoOfCertificate"},
                                              {"cbKostnadsber", u"EstimateOfCost"}});

class ApplicationForm : public FhpFixture {};

TEST_F(ApplicationForm, EmptyApplicationHasItsFixedFieldsOnly) {
  EXPECT_THAT(Keys(kForm), ElementsAre("edtArendeNr", "edtVardgivareNamn", "edtVardgivareAdress",
                                       "edtVardgivarePostNr", "edtVardgivarePostort",
                                       "edtVardgivareOrgNr", "edtPatientPersonNr", "edtPatientNamn",
                                       "edtOrtDatum", "edtTelefon", "edtNamnfortydligande"));
}

TEST_F(ApplicationForm, FullApplicationHasEveryFieldInOrder) {
  for (const auto& flag : kCheckBoxes) {
    application[flag.column] = true;
  }
  for (const auto& count : kCounts) {
    application[count.column] = 2;
  }
  application[u"SentBy"] = u"post";
  provider[u"levno"] = u"L1";
  provider[u"tlfPrivat"] = u"08-1";
  for (const auto* column : {u"PrevDentalCare", u"Caries", u"perio", u"Apikal", u"PlanTreatm"}) {
    application[column] = u"<11>a</11><48>b</48>";
  }
  for (const auto* column : {u"Anamnes", u"TimeEstimate81", u"TimeEstimateDentalTechnic",
                             u"PlanTreatmUJaw", u"PlanTreatmLJaw"}) {
    application[column] = u"text";
  }
  EXPECT_THAT(
      Keys(kForm),
      ElementsAre("edtArendeNr", "cbProt", "cbTandregl", "cbParagraf16", "cbForhojdErsattn",
                  "cbHjalpmedel", "cbTidsdeb", "cbImplantat", "cb2StegsProvn", "cbFrivillig",
                  "cbKompl", "cbLAF", "cbHogkostnskydd", "cbLSP", "edtAntalRtg", "edtAntalOPG",
                  "edtVia", "edtAntalModeller", "edtAntalFoto", "edtAntalIntyg", "cbKostnadsber",
                  "edtVardgivareNamn", "edtVardgivareAdress", "edtVardgivarePostNr",
                  "edtVardgivarePostort", "edtVardgivareOrgNr", "edtVardgivareLeverantorNr",
                  "edtPatientPersonNr", "edtPatientNamn", "edt11foregtv", "edt48foregtv",
                  "edt11karies", "edt48karies", "edt11paroddiagn", "edt48paroddiagn",
                  "edt11apikalaforandr", "edt48apikalaforandr", "memAnamnes", "edt11beh",
                  "edt48beh", "edtBerTidsatgang81", "edtBerTidsatgangTT", "edtOrtDatum",
                  "edtTelefon", "edtNamnfortydligande", "edtUJbeh", "edtLJbeh"));
}

TEST_F(ApplicationForm, CheckBoxIsWrittenAsTrueWhenItsColumnIsTrue) {
  for (const auto& flag : kCheckBoxes) {
    for (const Value& yes : {Value(true), Value(-1), Value(1), Value(0.5), Value(u"True")}) {
      application[flag.column] = yes;
      EXPECT_THAT(ValueOf(flag.key), Optional(std::string("true"))) << flag.key;
    }
    for (const Value& no : kNoValues) {
      application[flag.column] = no;
      EXPECT_EQ(ValueOf(flag.key), std::nullopt) << flag.key;
    }
  }
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(ApplicationForm, NonNumericFlagIsReportedAndLeftOut) {
  application[u"Inlay"] = u"ja";
  application[u"LAF"] = true;
  EXPECT_NE(Write(), u"");
  EXPECT_EQ(Boxes(), std::vector<std::u16string>{u"13 Type mismatch in NullToBool"});
  EXPECT_EQ(File().find("cbProt"), std::string::npos);
  EXPECT_NE(File().find("cbLAF"), std::string::npos);
}

TEST_F(ApplicationForm, CountIsWrittenAsTextUnlessItIsZero) {
  for (const auto& count : kCounts) {
    application[count.column] = 12;
    EXPECT_THAT(ValueOf(count.key), Optional(std::string("12"))) << count.key;
    application[count.column] = -3;
    EXPECT_THAT(ValueOf(count.key), Optional(std::string("-3"))) << count.key;
    for (const Value& no : kNoValues) {
      application[count.column] = no;
      EXPECT_EQ(ValueOf(count.key), std::nullopt) << count.key;
    }
  }
}

TEST_F(ApplicationForm, EstimateBoxIsWrittenAsItsOwnText) {
  application[u"EstimateOfCost"] = true;
  EXPECT_THAT(ValueOf("cbKostnadsber"), Optional(std::string("True")));
  application[u"EstimateOfCost"] = 1;
  EXPECT_THAT(ValueOf("cbKostnadsber"), Optional(std::string("1")));
}

TEST_F(ApplicationForm, WayOfSendingIsTestedForNullOnly) {
  application[u"SentBy"] = u"";
  EXPECT_THAT(ValueOf("edtVia"), Optional(std::string()));
  application[u"SentBy"] = 0;
  EXPECT_THAT(ValueOf("edtVia"), Optional(std::string("0")));
  application[u"SentBy"] = Null();
  EXPECT_EQ(ValueOf("edtVia"), std::nullopt);
}

TEST_F(ApplicationForm, AddressIsTheFirstLinePresent) {
  EXPECT_THAT(ValueOf("edtVardgivareAdress"), Optional(std::string("Storgatan 1")));
  for (const auto* there : {u"", u" ", u"\t"}) {
    provider[u"adr1"] = there;
    EXPECT_THAT(ValueOf("edtVardgivareAdress"), Optional(automation::ToUtf8(there)));
  }
  provider[u"adr1"] = Null();
  EXPECT_THAT(ValueOf("edtVardgivareAdress"), Optional(std::string("Box 5")));
}

TEST_F(ApplicationForm, WithoutAnAddressAnEmptyValueIsStillWritten) {
  provider[u"adr1"] = provider[u"adr2"] = Null();
  Write();
  EXPECT_NE(File().find("<FormItemKey>edtVardgivareAdress</FormItemKey><FormItemValue/>"),
            std::string::npos);
}

TEST_F(ApplicationForm, ProviderNumberIsLeftOutWhenNull) {
  EXPECT_EQ(ValueOf("edtVardgivareLeverantorNr"), std::nullopt);
  provider[u"levno"] = 77;
  EXPECT_THAT(ValueOf("edtVardgivareLeverantorNr"), Optional(std::string("77")));
}

TEST_F(ApplicationForm, PatientHasNumberAndFullName) {
  EXPECT_THAT(ValueOf("edtPatientPersonNr"), Optional(std::string("19700315-1234")));
  EXPECT_THAT(ValueOf("edtPatientNamn"), Optional(std::string("Anna Berg")));
}

TEST_F(ApplicationForm, PlaceAndDayHaveTheUsersDateFormatWithoutTime) {
  EXPECT_THAT(ValueOf("edtOrtDatum"), Optional(std::string("Stockholm 2026-11-16")));
  locale.regional = {};
  EXPECT_THAT(ValueOf("edtOrtDatum"), Optional(std::string("Stockholm 11/16/2026")));
}

TEST_F(ApplicationForm, MissingTelephoneIsAnEmptyField) {
  EXPECT_THAT(ValueOf("edtTelefon"), Optional(std::string()));
  provider[u"tlfPrivat"] = u"08-123 45";
  EXPECT_THAT(ValueOf("edtTelefon"), Optional(std::string("08-123 45")));
}

TEST_F(ApplicationForm, CliniciansMissingNamesAddNothing) {
  EXPECT_THAT(ValueOf("edtNamnfortydligande"), Optional(std::string("Eva Ek")));
  clinician[u"Fornavn"] = Null();
  EXPECT_THAT(ValueOf("edtNamnfortydligande"), Optional(std::string(" Ek")));
  clinician[u"Navn"] = Null();
  EXPECT_THAT(ValueOf("edtNamnfortydligande"), Optional(std::string(" ")));
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(ApplicationForm, TextsKeepTheirBlanks) {
  application[u"CaseNo"] = u" A1 ";
  application[u"SentBy"] = u" post ";
  application[u"Anamnes"] = u" a\r\n";
  application[u"PlanTreatm"] = u"< 11 > 921  922 </11>";
  application[u"Caries"] = u"<11>\ta\u00A0</11>";
  provider[u"Navn"] = u" Kliniken ";
  patient[u"Fornavn"] = u" Anna ";
  patient[u"Navn"] = u" Berg ";
  clinician[u"Fornavn"] = u" Eva ";
  EXPECT_THAT(ValueOf("edtArendeNr"), Optional(std::string(" A1 ")));
  EXPECT_THAT(ValueOf("edtVia"), Optional(std::string(" post ")));
  EXPECT_THAT(ValueOf("memAnamnes"), Optional(std::string(" a&#13;\n")));
  EXPECT_THAT(ValueOf("edt 11 beh"), Optional(std::string(" 921  922 ")));
  EXPECT_THAT(ValueOf("edt11karies"), Optional(std::string("\ta\xA0")));
  EXPECT_THAT(ValueOf("edtVardgivareNamn"), Optional(std::string(" Kliniken ")));
  EXPECT_THAT(ValueOf("edtPatientNamn"), Optional(std::string(" Anna   Berg ")));
  EXPECT_THAT(ValueOf("edtNamnfortydligande"), Optional(std::string(" Eva  Ek")));
}

TEST_F(ApplicationForm, EmptyClinicalTextsAreEmptyFieldsAndEmptyTeethAreLeftOut) {
  for (const auto* column : {u"PrevDentalCare", u"Caries", u"perio", u"Apikal", u"PlanTreatm",
                             u"Anamnes", u"PlanTreatmUJaw", u"PlanTreatmLJaw"}) {
    application[column] = u"";
  }
  const auto keys = Keys(kForm);
  EXPECT_THAT(std::vector(keys.begin() + 8, keys.end()),
              ElementsAre("memAnamnes", "edtOrtDatum", "edtTelefon", "edtNamnfortydligande",
                          "edtUJbeh", "edtLJbeh"));
}

TEST_F(ApplicationForm, TimeEstimatesAreWrittenOnceAtTheirPosition) {
  application[u"TimeEstimate81"] = 1.5;
  application[u"TimeEstimateDentalTechnic"] = 0;
  const auto keys = Keys(kForm);
  EXPECT_THAT(std::vector(keys.begin() + 8, keys.end()),
              ElementsAre("edtBerTidsatgang81", "edtBerTidsatgangTT", "edtOrtDatum", "edtTelefon",
                          "edtNamnfortydligande"));
  EXPECT_THAT(ValueOf("edtBerTidsatgang81"), Optional(std::string("1,5")));
  EXPECT_THAT(ValueOf("edtBerTidsatgangTT"), Optional(std::string("0")));
}

TEST_F(ApplicationForm, JawTextsAreSentUnchanged) {
  application[u"PlanTreatmUJaw"] = u" 921 922  923";
  application[u"PlanTreatmLJaw"] = u"1 2 3 4 5 ";
  EXPECT_THAT(ValueOf("edtUJbeh"), Optional(std::string(" 921 922  923")));
  EXPECT_THAT(ValueOf("edtLJbeh"), Optional(std::string("1 2 3 4 5 ")));
}

TEST_F(ApplicationForm, EachColumnIsScannedFromItsStart) {
  application[u"PrevDentalCare"] = u"<11>a";
  application[u"Caries"] = u"<12>b</12>";
  EXPECT_THAT(ValueOf("edt11foregtv"), Optional(std::string("a")));
  EXPECT_THAT(ValueOf("edt12karies"), Optional(std::string("b")));
}

TEST_F(ApplicationForm, MarkupInFreeTextsIsText) {
  application[u"Anamnes"] = u"<b>a & b</b> \"c\" ]]>\r\nnästa rad\t€";
  EXPECT_THAT(ValueOf("memAnamnes"),
              Optional(std::string("&lt;b&gt;a &amp; b&lt;/b&gt; \"c\" ]]&gt;&#13;\nn\xE4sta "
                                   "rad\t&#8364;")));
}

TEST_F(ApplicationForm, MarkupInAToothsTextFollowsTheTags) {
  application[u"PlanTreatm"] = u"<11>a & <i>b</i></11>";
  const auto fields = FieldsOf(kForm);
  EXPECT_THAT(std::vector(fields->begin() + 8, fields->begin() + 10),
              ElementsAre(Pair("edt11beh", "a &amp; &lt;i&gt;b"), Pair("edtibeh", "b")));
}

TEST_F(ApplicationForm, UnclosedTagInsideATextIsASeparateField) {
  application[u"PlanTreatm"] = u"<11>a <12>b</11><13>c</13>";
  const auto fields = FieldsOf(kForm);
  EXPECT_THAT(
      std::vector(fields->begin() + 8, fields->begin() + 11),
      ElementsAre(Pair("edt11beh", "a &lt;12&gt;b"), Pair("edt12beh", "b"), Pair("edt13beh", "c")));
}

TEST_F(ApplicationForm, TruncatedPlanIsSentToItsEnd) {
  application[u"PlanTreatm"] = u"<11>a</11><12>b c";
  EXPECT_THAT(ValueOf("edt12beh"), Optional(std::string("b c")));
  application[u"PlanTreatm"] = u"<11>a</11><12";
  EXPECT_THAT(ValueOf("edt11beh"), Optional(std::string("a")));
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(ApplicationForm, PlanOfFortyThousandCharactersIsSentCompletely) {
  std::u16string plan;
  while (plan.size() < 40000) {
    plan += u"<11>Krona å</11>";
  }
  application[u"PlanTreatm"] = plan;
  const auto fields = FieldsOf(kForm);
  EXPECT_EQ(fields->size(), 11 + plan.size() / 16);
  EXPECT_EQ((*fields)[8 + plan.size() / 16 - 1],
            std::pair(std::string("edt11beh"), std::string("Krona \xE5")));
  application[u"PlanTreatm"] = u"<11>" + std::u16string(40000, u'k') + u"</11>";
  EXPECT_THAT(ValueOf("edt11beh"), Optional(std::string(40000, 'k')));
}

TEST_F(ApplicationForm, NumbersAndDatesAsTextFollowTheUsersSettings) {
  application[u"SentBy"] = 2.25;
  EXPECT_THAT(ValueOf("edtVia"), Optional(std::string("2,25")));
  application[u"SentBy"] = automation::MakeDate({.year = 2007, .month = 1, .day = 2});
  EXPECT_THAT(ValueOf("edtVia"), Optional(std::string("2007-01-02")));
  locale.regional = {};
  application[u"SentBy"] = 2.25;
  EXPECT_THAT(ValueOf("edtVia"), Optional(std::string("2.25")));
}

}  // namespace
}  // namespace fhp
