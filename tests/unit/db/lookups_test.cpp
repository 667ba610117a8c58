// The results of lookups with and without rows.
#include "fixture.h"

namespace unit {
namespace {

using automation::Null;
using automation::Value;
using db::DBVilnor;
using platform::Recordset;

const std::u16string kPatientQuery =
    u"SELECT ID, Fornavn, Navn, fDato , PersNr FROM Pasient where ID = 4711";
const std::u16string kTownQuery =
    u"SELECT Poststedsnavn FROM Postadresseregister where Postnr = '41301'";
const std::u16string kCountQuery =
    u"SELECT COUNT(*) AS Antal FROM SEPrerequestEstimateRows WHERE SEPrerequest_ID = 77";
const std::u16string kCodeQuery = u"SELECT ID from Pasient where Code1 = -32001";

class Lookups : public DbTest {
 protected:
  DBVilnor operations;
};

TEST_F(Lookups, LookupGivesACloneThatOutlivesTheConnection) {
  database.Answer(kPatientQuery,
                  {{u"ID", u"Fornavn", u"fDato"},
                   {{4711, u"Åsa-Märta", automation::Date{31118}}, {4711, u"Örjan", Null()}}});
  const std::unique_ptr<Recordset> patient = operations.GetPIDById(4711);
  db::ReleaseShared();
  ASSERT_NE(patient, nullptr);
  EXPECT_FALSE(patient->Eof());
  EXPECT_EQ(patient->Field(u"fornavn"), Value(u"Åsa-Märta"));
  EXPECT_EQ(patient->Field(u"FDATO"), Value(automation::Date{31118}));
  patient->MoveNext();
  EXPECT_EQ(patient->Field(u"Fornavn"), Value(u"Örjan"));
  EXPECT_EQ(patient->Field(u"fDato"), Value(Null()));
  patient->MoveNext();
  EXPECT_TRUE(patient->Eof());
}

TEST_F(Lookups, LookupWithoutARowLeavesTheRecordsetOpenAndTheNextQueryFails) {
  EXPECT_EQ(operations.GetPIDById(4711), nullptr);
  EXPECT_TRUE(Boxes().empty());
  database.Answer(kTownQuery, {{u"Poststedsnavn"}, {{u"Göteborg"}}});
  EXPECT_EQ(operations.GetCityByPostnr(41301), u"");
  EXPECT_EQ(operations.GetCityByPostnr(41301), u"");
  EXPECT_EQ(Boxes(), (std::vector<std::u16string>{kAlreadyOpen + u"GetCityByPostnr",
                                                  kAlreadyOpen + u"GetCityByPostnr"}));
}

TEST_F(Lookups, UnknownPostcodeGivesNoTownAndLeavesTheRecordsetOpen) {
  EXPECT_EQ(operations.GetCityByPostnr(99999), u"");
  EXPECT_TRUE(Boxes().empty());
  EXPECT_TRUE(database.LogOf(u"Recordset.Close").empty());
}

TEST_F(Lookups, TownLookupComparesThePostcodeAsText) {
  operations.GetCityByPostnr(-1);
  EXPECT_EQ(database.Log().back(),
            u"Recordset.Open type 1, lock 3, options -1, cursor 3: SELECT Poststedsnavn FROM "
            u"Postadresseregister where Postnr = '-1'");
}

TEST_F(Lookups, LookupWritesTheSmallestAndTheLargestKeyInPlainDecimal) {
  operations.GetFHPById(std::numeric_limits<std::int32_t>::min());
  operations.GetFHPById(std::numeric_limits<std::int32_t>::max());
  const auto opened = database.LogOf(u"Recordset.Open");
  EXPECT_TRUE(opened.at(0).ends_with(u"SEPrerequestID = -2147483648"));
  EXPECT_TRUE(opened.at(1).ends_with(u"SEPrerequestID = 2147483647"));
}

TEST_F(Lookups, NullTextInALookupShowsInvalidUseOfNull) {
  database.Answer(kTownQuery, {{u"Poststedsnavn"}, {{Null()}}});
  EXPECT_EQ(operations.GetCityByPostnr(41301), u"");
  EXPECT_EQ(Boxes(), std::vector<std::u16string>{u"94 Invalid use of Null in GetCityByPostnr"});
}

TEST_F(Lookups, NullInALookupLeavesTheRecordsetOpen) {
  database.Answer(kTownQuery, {{u"Poststedsnavn"}, {{Null()}}});
  operations.GetCityByPostnr(41301);
  dialogs.shown.clear();
  operations.PreRequestCostExists(77);
  EXPECT_EQ(Boxes(), std::vector<std::u16string>{kAlreadyOpen + u"PreRequestCostExists"});
}

TEST_F(Lookups, MissingColumnInALookupShowsError3265) {
  database.Answer(kTownQuery, {{u"Navn"}, {{u"Göteborg"}}});
  EXPECT_EQ(operations.GetCityByPostnr(41301), u"");
  ASSERT_EQ(Boxes().size(), 1U);
  EXPECT_EQ(Boxes()[0],
            u"3265 Item cannot be found in the collection corresponding to the requested name or "
            u"ordinal. in GetCityByPostnr");
}

TEST_F(Lookups, EstimateRowsExistFromOneRowOn) {
  for (const auto& [count, exists] :
       {std::pair<Value, bool>{0, false}, {1, true}, {2, true}, {automation::Decimal{3}, true}}) {
    database.Answer(kCountQuery, {{u"Antal"}, {{count}}});
    EXPECT_EQ(operations.PreRequestCostExists(77), exists);
  }
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(Lookups, UserLookupByCodeGoesByThePatientFound) {
  database.Answer(kCodeQuery, {{u"ID"}, {{8}}});
  database.Answer(u"SELECT UserName from VilnorPasient where PID = 8",
                  {{u"UserName"}, {{u"handläggare"}}});
  EXPECT_EQ(operations.GetVilnorUserByCode1(-32001), u"handläggare");
}

TEST_F(Lookups, UserLookupByAnUnknownCodeFailsForPatient0) {
  EXPECT_EQ(operations.GetVilnorUserByCode1(-32001), u"");
  EXPECT_EQ(Boxes(), std::vector<std::u16string>{kAlreadyOpen + u"GetVilnorUserByPID"});
  EXPECT_TRUE(database.Log().back().ends_with(u"where PID = 0"));
}

TEST_F(Lookups, UserLookupOfAPatientWithoutIdShowsInvalidUseOfNull) {
  database.Answer(kCodeQuery, {{u"ID"}, {{Null()}}});
  EXPECT_EQ(operations.GetVilnorUserByCode1(-32001), u"");
  EXPECT_EQ(Boxes(),
            std::vector<std::u16string>{u"94 Invalid use of Null in GetVilnorUserByCode1"});
}

TEST_F(Lookups, UserLookupOfAnUnmappedPatientGivesNothing) {
  EXPECT_EQ(operations.GetVilnorUserByPID(4711), u"");
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(Lookups, LinkLookupConvertsItsCaseIdToText) {
  database.Answer(u"SELECT * FROM Vilnor WHERE VilnorId = 5", {{u"CASEID"}, {{20071}}});
  EXPECT_EQ(operations.GetCaseIdByVilnorId(5), u"20071");
}

TEST_F(Lookups, LinkLookupWithoutARowGivesTheEmptyValue) {
  EXPECT_EQ(operations.GetCaseIdByVilnorId(5), u"");
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(Lookups, LookupsStatementIsTheThreadsLastOne) {
  operations.GetPatientSSNByPID(4711);
  EXPECT_EQ(db::CurrentConnectionState().gSql,
            u"SELECT  fDato, PersNr from Pasient where ID = 4711");
  db::ReleaseShared();
  EXPECT_EQ(db::CurrentConnectionState().gSql,
            u"SELECT  fDato, PersNr from Pasient where ID = 4711");
}

}  // namespace
}  // namespace unit
