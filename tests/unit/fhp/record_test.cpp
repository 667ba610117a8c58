// Records are read in one call. If it fails they are read field by field, and a field that cannot
// be read raises its error where the form asks for it, not before.
#include "fhp/record.h"

#include <array>
#include <gmock/gmock.h>

#include "fakes/printing.h"
#include "fhp/record_columns.h"
#include "unit/fhp/fixture.h"

namespace fhp {
namespace {

using fakes::ErrorNumberOf;
using Texts = std::vector<std::u16string>;

const automation::AutomationError kRefused(3251, u"ADODB.Recordset", u"Not capable.");
const std::u16string kMissing =
    u"3265 Item cannot be found in the collection corresponding to the requested name or ordinal. "
    u"in WriteNewFHP";

class Records : public FhpFixture {
 protected:
  // The application without a column. Only the whole call or a name finds out.
  void DropColumn(const std::u16string& column) { application.erase(column); }

  static void ExpectNoCurrentRecord(const Record& row, std::u16string_view column) {
    const auto expected = fakes::AdoError(3021);
    try {
      row[column];
      ADD_FAILURE() << "no error";
    } catch (const automation::AutomationError& error) {
      EXPECT_EQ(error.number(), expected.number());
      EXPECT_EQ(error.description(), expected.description());
    }
  }

  void UseEstimate() {
    UseOlderPatient();
    AddEstimateRow();
    AddEstimateRow({{u"RateNo", 401}});
  }
};

TEST_F(Records, EachRecordIsReadInOneCall) {
  UseEstimate();
  database.LogReads(true);
  Write();
  EXPECT_EQ(database.LogOf(u"Recordset.GetRows").size(), 5U);
  // Of the town, the row count and the participant.
  EXPECT_EQ(database.LogOf(u"Recordset.Field"),
            (Texts{u"Recordset.Field Poststedsnavn", u"Recordset.Field Antal",
                   u"Recordset.Field ID", u"Recordset.Field UserName"}));
}

TEST_F(Records, FileIsTheSameWhenNoRecordCanBeReadInOneCall) {
  UseEstimate();
  Write();
  const std::string whole = File();
  database.FailRows(kRefused);
  Write();
  EXPECT_EQ(File(), whole);
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(Records, MissingColumnThatNoFormAsksForIsNotReported) {
  DropColumn(u"Notes");
  EXPECT_NE(Write(), u"");
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(Records, MissingColumnIsReportedWhereTheFormAsksForIt) {
  UseEstimate();
  DropColumn(u"Notes");
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(Boxes(), Texts{kMissing});
  EXPECT_FALSE(Exists(u"InNewFHP8.xml"));
}

TEST_F(Records, ErrorsAreRaisedInTheOrderInWhichTheFormAsks) {
  DropColumn(u"LSP");
  provider[u"Navn"] = Null();
  EXPECT_EQ(Write(), u"");
  application[u"CaseNo"] = Null();
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(Boxes(), (Texts{kMissing, u"94 Invalid use of Null in WriteNewFHP"}));
}

TEST_F(Records, MissingKeyIsReportedBeforeTheNextLookup) {
  DropColumn(u"BID");
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(Boxes(), Texts{kMissing});
  EXPECT_EQ(database.LogOf(u"Recordset.Open").size(), 1U);
}

TEST_F(Records, RowsCanBeReadAgain) {
  constexpr auto kColumns = std::to_array<std::u16string_view>({u"A", u"B"});
  database.Answer(u"q", {{u"a", u"b"}, {{1, u"x"}, {2, Null()}}});
  auto connection = database.NewConnection();
  connection->Open(u"", u"", u"", -1);
  Record row(connection->Execute(u"q", -1), kColumns);
  row.MoveNext();
  EXPECT_EQ(row[u"A"], Value(2));
  EXPECT_TRUE(row[u"B"].IsNull());
  EXPECT_EQ(std::u16string_view(row.Text(u"A")), u"2");
  EXPECT_EQ(std::u16string_view(row.TextOrEmpty(u"B")), u"");
  EXPECT_EQ(ErrorNumberOf([&] { row.Text(u"B"); }), 94);
  row.MoveNext();
  EXPECT_TRUE(row.AtEnd());
  ExpectNoCurrentRecord(row, u"A");
  row.MoveFirst();
  EXPECT_FALSE(row.AtEnd());
  EXPECT_EQ(row[u"A"], Value(1));
}

TEST_F(Records, RecordWithoutRowsRaisesAdosErrorAtItsUse) {
  constexpr auto kColumns = std::to_array<std::u16string_view>({u"A"});
  database.Answer(u"q", {{u"a"}, {}});
  auto connection = database.NewConnection();
  connection->Open(u"", u"", u"", -1);
  const Record row(connection->Execute(u"q", -1), kColumns);
  EXPECT_TRUE(row.AtEnd());
  ExpectNoCurrentRecord(row, u"A");
}

TEST_F(Records, ColumnsThatAFormMayUseAreThoseThatAreRead) {
  EXPECT_TRUE(IsRead(&ApplicationRecords::application, u"Notes"));
  EXPECT_TRUE(IsRead(&ApplicationRecords::clinician, u"fornavn"));
  EXPECT_TRUE(IsRead(&ApplicationRecords::provider, u"LevNo"));
  EXPECT_TRUE(IsRead(&ApplicationRecords::patient, u"PersNr"));
  EXPECT_FALSE(IsRead(&ApplicationRecords::clinician, u"Notes"));
  EXPECT_FALSE(IsRead(&ApplicationRecords::provider, u"fornavn"));
  EXPECT_FALSE(IsRead(&ApplicationRecords::patient, u"LevNo"));
}

TEST_F(Records, EveryUseOfNoRecordRaises91) {
  const Record none(nullptr, {});
  EXPECT_EQ(ErrorNumberOf([&] { none[u"A"]; }), 91);
  EXPECT_EQ(ErrorNumberOf([&] { none.AtEnd(); }), 91);
}

}  // namespace
}  // namespace fhp
