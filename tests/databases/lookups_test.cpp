// The lookups return the contents of the host's tables.
#include "databases/clinic.h"
#include "platform/conversions.h"

namespace databases {
namespace {

using automation::MakeDate;
using automation::Null;
using automation::Value;

class Lookups : public Clinic {
 protected:
  db::DBVilnor operations;
};

TEST_P(Lookups, PatientLookupGivesSwedishLettersAndBirthDate) {
  const auto patient = operations.GetPIDById(4711);
  ASSERT_NE(patient, nullptr);
  EXPECT_EQ(patient->Field(u"ID"), Value(4711));
  EXPECT_EQ(patient->Field(u"fornavn"), Value(u"Åsa-Märta"));
  EXPECT_EQ(patient->Field(u"Navn"), Value(u"Öberg"));
  EXPECT_EQ(patient->Field(u"FDato"), Value(MakeDate({1985, 3, 12})));
  EXPECT_EQ(patient->Field(u"PersNr"), Value(u"1234"));
}

TEST_P(Lookups, LookedUpRowsAreReadableAfterTheConnectionIsClosed) {
  const auto patient = operations.GetPatientByPID(4712);
  db::ReleaseShared();
  ASSERT_NE(patient, nullptr);
  EXPECT_FALSE(patient->Eof());
  EXPECT_EQ(patient->Field(u"ForNavn"), Value(u"René"));
  patient->MoveNext();
  EXPECT_TRUE(patient->Eof());
}

TEST_P(Lookups, PatientLookupGivesNullForMissingData) {
  const auto patient = operations.GetPatientSSNByPID(4717);
  ASSERT_NE(patient, nullptr);
  EXPECT_EQ(patient->Field(u"FDato"), Value(Null()));
  EXPECT_EQ(patient->Field(u"PersNr"), Value(Null()));
}

TEST_P(Lookups, PatientLookupFindsAPatientOverAHundredYearsOld) {
  const auto patient = operations.GetPatientSSNByPID(4714);
  ASSERT_NE(patient, nullptr);
  EXPECT_EQ(patient->Field(u"fDato"), Value(MakeDate({1919, 5, 5})));
}

TEST_P(Lookups, PractitionerLookupTakesTheNameOfTheAddressRecord) {
  const auto practitioner = operations.GetBIDById(13);
  ASSERT_NE(practitioner, nullptr);
  EXPECT_EQ(practitioner->Field(u"Fornavn"), Value(u"Zoë"));
  EXPECT_EQ(practitioner->Field(u"navn"), Value(u"Åhlén"));
  EXPECT_EQ(practitioner->Field(u"RID"), Value(4));
  EXPECT_EQ(practitioner->Field(u"ReseptID"), Value(Null()));
}

TEST_P(Lookups, ProviderLookupGivesTheCompany) {
  const auto company = operations.GetRIDById(3);
  ASSERT_NE(company, nullptr);
  EXPECT_EQ(company->Field(u"Navn"), Value(u"Tandläkarna vid Ån AB"));
  EXPECT_EQ(company->Field(u"Adr1"), Value(u"Ågatan 5"));
  EXPECT_EQ(company->Field(u"Adr2"), Value(u"Box 88"));
  EXPECT_EQ(company->Field(u"Postnr"), Value(u"41301"));
  EXPECT_EQ(company->Field(u"OrganizationNo"), Value(u"559900-1234"));
  EXPECT_EQ(company->Field(u"LevNo"), Value(u"L-1003"));
}

TEST_P(Lookups, TownLookupGivesThePostalTown) {
  EXPECT_EQ(operations.GetCityByPostnr(83131), u"Östersund");
  EXPECT_EQ(operations.GetCityByPostnr(99999), u"");
  EXPECT_TRUE(Boxes().empty());
}

TEST_P(Lookups, ApplicationLookupGivesAllColumns) {
  const auto application = operations.GetFHPById(77);
  ASSERT_NE(application, nullptr);
  EXPECT_EQ(application->Field(u"PID"), Value(4711));
  EXPECT_EQ(application->Field(u"RegDate"), Value(MakeDate({2026, 11, 16, 13, 40, 0})));
  EXPECT_EQ(application->Field(u"Inlay"), Value(true));
  EXPECT_EQ(application->Field(u"NoOfXRay"), Value(4));
  EXPECT_EQ(application->Field(u"Apikal"), Value(u"<22>periapikal förändring</22>"));
  EXPECT_EQ(application->Field(u"PlanTreatm"), Value(u"<11>304 305</11><36>101 102 103 104</36>"));
  const auto bare = operations.GetFHPById(79);
  ASSERT_NE(bare, nullptr);
  EXPECT_EQ(bare->Field(u"Inlay"), Value(Null()));
  EXPECT_EQ(bare->Field(u"PlanTreatm"), Value(Null()));
}

TEST_P(Lookups, EstimateRowsExistFromOneRowOnInTheDatabase) {
  EXPECT_TRUE(operations.PreRequestCostExists(78));
  EXPECT_TRUE(operations.PreRequestCostExists(77));
  EXPECT_FALSE(operations.PreRequestCostExists(79));
  EXPECT_TRUE(Boxes().empty());
}

TEST_P(Lookups, EqualEstimateRowsAreGroupedIntoOne) {
  const auto rows = operations.GetPreRequestCostByFHPid(78);
  ASSERT_NE(rows, nullptr);
  std::vector<std::u16string> texts;
  for (; !rows->Eof(); rows->MoveNext()) {
    texts.push_back(platform::ToText(rows->Field(u"RateNo")) + u" x" +
                    platform::ToText(rows->Field(u"SelectNoOf")) + u" " +
                    platform::ToText(rows->Field(u"Amount")) + u" " +
                    platform::ToText(rows->Field(u"Debit")));
  }
  EXPECT_THAT(texts, testing::UnorderedElementsAre(u"801 x2 4350,5 Ä", u"681 x1 2900 Ä",
                                                   u"682 x1 3100,25 Ä", u"115 x1 250 N"));
}

TEST_P(Lookups, ReservedUsersAreFoundByTheirCodes) {
  EXPECT_EQ(operations.GetVilnorUserByCode1(-32000), u"granskare");
  EXPECT_EQ(operations.GetVilnorUserByCode1(-32001), u"kostnadsgranskare");
}

TEST_P(Lookups, UserLookupByAnUnknownCodeFailsInTheInnerLookup) {
  EXPECT_EQ(operations.GetVilnorUserByCode1(5), u"");
  EXPECT_EQ(Boxes(), std::vector<std::u16string>{u"3705 Operation is not allowed when the object "
                                                 u"is open. in GetVilnorUserByPID"});
}

TEST_P(Lookups, LookupWithoutARowGivesNothingAndLeavesTheRecordsetOpen) {
  EXPECT_EQ(operations.GetPIDById(1), nullptr);
  EXPECT_TRUE(Boxes().empty());
  EXPECT_EQ(operations.GetPIDById(4711), nullptr);
  EXPECT_EQ(Boxes(), std::vector<std::u16string>{
                         u"3705 Operation is not allowed when the object is open. in GetPIDById"});
}

TEST_P(Lookups, LinkLookupByApplicationSkipsLinksOfOtherCaseTypes) {
  EXPECT_EQ(operations.GetVilnorIdByFHPId(71), 101);
  Run(u"UPDATE Vilnor SET FHP_ID = 88 WHERE VilnorId = 102");
  EXPECT_EQ(operations.GetVilnorIdByFHPId(88), 0) << "a link of case type 9";
  EXPECT_TRUE(Boxes().empty());
}

TEST_P(Lookups, CaseIdLookupGivesTheCaseIdOfALink) {
  EXPECT_EQ(operations.GetCaseIdByVilnorId(102), u"2072");
}

TEST_P(Lookups, ExistenceLookupFindsALink) {
  EXPECT_TRUE(operations.CaseExists(71, 1));
  EXPECT_TRUE(operations.CaseExistsPID(4712, 9, u"2072"));
  EXPECT_FALSE(operations.CaseExistsPID(4712, 9, u"2071"));
  EXPECT_TRUE(Boxes().empty());
}

TEST_P(Lookups, LookupAfterAMissingLinkShowsTheAlreadyOpenBox) {
  EXPECT_FALSE(operations.CaseExists(71, 9));
  EXPECT_FALSE(operations.CaseExists(71, 1));
  EXPECT_EQ(Boxes(), std::vector<std::u16string>{
                         u"3705 Operation is not allowed when the object is open. in CaseExists"});
}

INSTANTIATE_FOR_PRODUCTS(Lookups);

}  // namespace
}  // namespace databases
