// States, errors, cursor and clones of the recordset.
#include <array>

#include "contract/database_fixture.h"

namespace contract {
namespace {

using automation::Value;
using platform::CursorType;
using platform::LockType;

Value Number(std::int32_t number) {
  return number;
}

constexpr auto kNumber = std::to_array<std::u16string_view>({u"Number"});

constexpr std::u16string_view kNoRecordText =
    u"Either BOF or EOF is True, or the current record has been deleted. Requested operation "
    u"requires a current record.";
constexpr std::u16string_view kNoItemText =
    u"Item cannot be found in the collection corresponding to the requested name or ordinal.";

class RecordsetContract : public DatabaseContract {
 protected:
  void SetUp() override {
    DatabaseContract::SetUp();
    for (const auto* values : {u"(1, 'Åsa')", u"(2, 'Örjan')", u"(3, NULL)"}) {
      Run(std::u16string(u"INSERT INTO Trial (Number, Name) VALUES ") + values);
    }
  }
  std::unique_ptr<platform::Recordset> All() {
    return Query(u"SELECT Number, Name FROM Trial ORDER BY Number");
  }
  std::unique_ptr<platform::Recordset> None() {
    return Query(u"SELECT Number FROM Trial WHERE Number = 99");
  }
};

INSTANTIATE_TEST_SUITE_P(Products, RecordsetContract, testing::ValuesIn(Products()),
                         [](const auto& instance) { return instance.param.name; });

TEST_P(RecordsetContract, EveryReadingCallOnAClosedRecordsetRaises3704) {
  const auto closed = database->NewRecordset();
  for (const auto& raised :
       {ErrorOf([&] { closed->Eof(); }), ErrorOf([&] { closed->MoveNext(); }),
        ErrorOf([&] { closed->Field(u"Number"); }), ErrorOf([&] { closed->Field(0); }),
        ErrorOf([&] { closed->GetRows(kNumber); }),
        ErrorOf([&] { closed->SetField(u"Number", Number(1)); }),
        ErrorOf([&] { closed->Clone(LockType::Unspecified); }),
        ErrorOf([&] { closed->Close(); })}) {
    EXPECT_EQ(raised.number, 3704);
    EXPECT_EQ(raised.text, kClosedText);
  }
}

TEST_P(RecordsetContract, OpenRecordsetCannotBeOpenedNorItsCursorLocationSet) {
  const auto recordset = All();
  for (const auto& raised :
       {ErrorOf([&] {
          recordset->Open(u"SELECT 1", *connection, CursorType::Static, LockType::BatchOptimistic,
                          -1);
        }),
        ErrorOf([&] { recordset->SetCursorLocation(platform::CursorLocation::Server); })}) {
    EXPECT_EQ(raised.number, 3705);
    EXPECT_EQ(raised.text, kOpenText);
  }
  EXPECT_EQ(recordset->Field(u"Number"), Number(1)) << "the failed calls change nothing";
}

TEST_P(RecordsetContract, RecordsetWithoutRowsIsOpenAndStaysOpen) {
  const auto recordset = None();
  EXPECT_TRUE(recordset->Eof());
  EXPECT_EQ(ErrorOf([&] {
              recordset->Open(u"SELECT 1", *connection, CursorType::Static,
                              LockType::BatchOptimistic, -1);
            }).number,
            3705);
}

TEST_P(RecordsetContract, OpeningOnAClosedConnectionRaises3709) {
  const auto closed = database->NewConnection();
  const auto recordset = database->NewRecordset();
  const auto raised = ErrorOf([&] {
    recordset->Open(u"SELECT 1", *closed, CursorType::Static, LockType::BatchOptimistic, -1);
  });
  EXPECT_EQ(raised.number, 3709);
  EXPECT_EQ(raised.text,
            u"The connection cannot be used to perform this operation. It is either closed or "
            u"invalid in this context.");
}

TEST_P(RecordsetContract, FailedStatementLeavesTheRecordsetClosed) {
  const auto recordset = database->NewRecordset();
  EXPECT_EQ(ErrorOf([&] {
              recordset->Open(u"SELEC 1", *connection, CursorType::Static,
                              LockType::BatchOptimistic, -1);
            }).number,
            kErrorsInCommand);
  EXPECT_EQ(ErrorOf([&] { recordset->Eof(); }).number, 3704);
}

TEST_P(RecordsetContract, RowsAreReadInOrderUntilTheEnd) {
  const auto recordset = All();
  EXPECT_EQ(recordset->Field(u"Name"), Value(u"Åsa"));
  recordset->MoveNext();
  EXPECT_EQ(recordset->Field(u"Name"), Value(u"Örjan"));
  recordset->MoveNext();
  EXPECT_TRUE(recordset->Field(u"Name").IsNull());
  EXPECT_FALSE(recordset->Eof());
  recordset->MoveNext();
  EXPECT_TRUE(recordset->Eof());
}

TEST_P(RecordsetContract, MovingReadingAndWritingAfterTheLastRowRaise3021) {
  const auto recordset = None();
  for (const auto& raised :
       {ErrorOf([&] { recordset->MoveNext(); }), ErrorOf([&] { recordset->Field(u"Number"); }),
        ErrorOf([&] { recordset->Field(0); }), ErrorOf([&] { recordset->GetRows(kNumber); }),
        ErrorOf([&] { recordset->SetField(u"Number", Number(1)); })}) {
    EXPECT_EQ(raised.number, 3021);
    EXPECT_EQ(raised.text, kNoRecordText);
  }
}

TEST_P(RecordsetContract, FieldIsFoundByNameInAnyCaseOrByPositionFrom0) {
  const auto recordset = All();
  EXPECT_EQ(recordset->Field(u"NUMBER"), Number(1));
  EXPECT_EQ(recordset->Field(u"number"), Number(1));
  EXPECT_EQ(recordset->Field(0), Number(1));
  EXPECT_EQ(recordset->Field(1), Value(u"Åsa"));
}

TEST_P(RecordsetContract, MissingFieldRaises3265) {
  const auto recordset = All();
  for (const auto& raised :
       {ErrorOf([&] { recordset->Field(u"Nmae"); }), ErrorOf([&] { recordset->Field(u""); }),
        ErrorOf([&] { recordset->Field(2); }), ErrorOf([&] { recordset->Field(-1); }),
        ErrorOf([&] { recordset->SetField(u"Nmae", Value(u"x")); })}) {
    EXPECT_EQ(raised.number, 3265);
    EXPECT_EQ(raised.text, kNoItemText);
  }
}

TEST_P(RecordsetContract, RowsAreReadInOneCallWithTheirFieldsInTheOrderAskedFor) {
  constexpr auto kNames = std::to_array<std::u16string_view>({u"name", u"NUMBER"});
  const auto recordset = All();
  EXPECT_EQ(recordset->GetRows(kNames),
            (std::vector<Value>{Value(u"Åsa"), Number(1), Value(u"Örjan"), Number(2),
                                Value(automation::Null()), Number(3)}));
  EXPECT_TRUE(recordset->Eof());
  EXPECT_EQ(ErrorOf([&] { recordset->GetRows(kNames); }).number, 3021);
}

TEST_P(RecordsetContract, RowsAreReadFromTheCurrentOneOn) {
  const auto recordset = All();
  recordset->MoveNext();
  EXPECT_EQ(recordset->GetRows(kNumber), (std::vector<Value>{Number(2), Number(3)}));
}

TEST_P(RecordsetContract, RowsWithAMissingFieldRaise3265AndAreReadFieldByField) {
  constexpr auto kNames = std::to_array<std::u16string_view>({u"Number", u"Nmae"});
  const auto recordset = All();
  const auto raised = ErrorOf([&] { recordset->GetRows(kNames); });
  EXPECT_EQ(raised.number, 3265);
  EXPECT_EQ(raised.text, kNoItemText);
  EXPECT_EQ(recordset->Clone(LockType::Unspecified)->Field(u"Number"), Number(1));
}

TEST_P(RecordsetContract, RowsHaveTheFieldsWrittenToThem) {
  const auto recordset = All();
  recordset->SetField(u"Number", Number(7));
  EXPECT_EQ(recordset->GetRows(kNumber), (std::vector<Value>{Number(7), Number(2), Number(3)}));
}

TEST_P(RecordsetContract, ReadingACloneInOneCallLeavesItsSourceWhereItIs) {
  const auto recordset = All();
  EXPECT_EQ(recordset->Clone(LockType::Unspecified)->GetRows(kNumber).size(), 3U);
  EXPECT_EQ(recordset->Field(u"Number"), Number(1));
}

TEST_P(RecordsetContract, ClosedRecordsetCanBeOpenedAgain) {
  const auto recordset = All();
  recordset->Close();
  recordset->Open(u"SELECT 'again'", *connection, CursorType::Keyset, LockType::Optimistic, -1);
  EXPECT_EQ(recordset->Field(0), Value(u"again"));
}

TEST_P(RecordsetContract, CloneStartsAtTheFirstRowAndMovesIndependently) {
  const auto recordset = All();
  recordset->MoveNext();
  const auto clone = recordset->Clone(LockType::Unspecified);
  EXPECT_EQ(clone->Field(u"Number"), Number(1));
  clone->MoveNext();
  clone->MoveNext();
  EXPECT_EQ(clone->Field(u"Number"), Number(3));
  EXPECT_EQ(recordset->Field(u"Number"), Number(2));
}

TEST_P(RecordsetContract, CloneOutlivesItsSourceAndTheConnection) {
  auto recordset = All();
  const auto clone = recordset->Clone(LockType::Unspecified);
  recordset->Close();
  EXPECT_EQ(clone->Field(u"Name"), Value(u"Åsa"));
  recordset.reset();
  connection.reset();
  clone->MoveNext();
  EXPECT_EQ(clone->Field(u"Name"), Value(u"Örjan"));
}

TEST_P(RecordsetContract, ClosingACloneLeavesItsSourceOpen) {
  const auto recordset = All();
  recordset->Clone(LockType::Unspecified)->Close();
  EXPECT_EQ(recordset->Field(u"Number"), Number(1));
}

TEST_P(RecordsetContract, ClientSideKeysetRecordsetCanBeCloned) {
  const auto recordset = database->NewRecordset();
  recordset->SetCursorLocation(platform::CursorLocation::Client);
  recordset->Open(u"SELECT Number FROM Trial ORDER BY Number", *connection, CursorType::Keyset,
                  LockType::Optimistic, -1);
  EXPECT_EQ(recordset->Clone(LockType::Unspecified)->Field(0), Number(1));
}

TEST_P(RecordsetContract, RowsStayWhateverHappensToTheTable) {
  const auto recordset = All();
  Run(u"DELETE FROM Trial");
  recordset->MoveNext();
  EXPECT_EQ(recordset->Field(u"Number"), Number(2));
}

TEST_P(RecordsetContract, WrittenFieldIsReadBackAndTheDatabaseIsUnchanged) {
  const auto recordset = All();
  recordset->SetField(u"Name", Value(u"Ändrad"));
  EXPECT_EQ(recordset->Field(u"Name"), Value(u"Ändrad"));
  EXPECT_EQ(Scalar(u"SELECT Name FROM Trial WHERE Number = 1"), Value(u"Åsa"));
  recordset->Close();
  EXPECT_EQ(Scalar(u"SELECT Name FROM Trial WHERE Number = 1"), Value(u"Åsa"));
}

TEST_P(RecordsetContract, CloneSeesAWrittenFieldAfterItsRowIsLeft) {
  const auto recordset = All();
  const auto clone = recordset->Clone(LockType::Unspecified);
  recordset->SetField(u"Name", Value(u"Ändrad"));
  EXPECT_EQ(clone->Field(u"Name"), Value(u"Åsa")) << "the record is still in the writer's hand";
  recordset->MoveNext();
  EXPECT_EQ(clone->Field(u"Name"), Value(u"Ändrad"));
  EXPECT_EQ(Scalar(u"SELECT Name FROM Trial WHERE Number = 1"), Value(u"Åsa"));
}

TEST_P(RecordsetContract, CloneOfAClosedSourceCanBeWritten) {
  const auto recordset = All();
  const auto clone = recordset->Clone(LockType::Unspecified);
  recordset->Close();
  clone->SetField(u"Name", Value(u"Ändrad"));
  EXPECT_EQ(clone->Field(u"Name"), Value(u"Ändrad"));
}

TEST_P(RecordsetContract, ReadOnlyRecordsetRefusesWriting) {
  const auto clone = All()->Clone(LockType::ReadOnly);
  EXPECT_EQ(ErrorOf([&] { clone->SetField(u"Name", Value(u"x")); }).number, 3251);
  EXPECT_EQ(clone->Field(u"Name"), Value(u"Åsa"));
}

TEST_P(RecordsetContract, QueryThroughTheConnectionGivesItsRows) {
  const auto rows = connection->Execute(u"SELECT Number FROM Trial ORDER BY Number", -1);
  EXPECT_FALSE(rows->Eof());
  EXPECT_EQ(rows->Field(0), Number(1));
  rows->MoveNext();
  EXPECT_EQ(rows->Field(u"Number"), Number(2));
}

TEST_P(RecordsetContract, StatementWithoutRowsGivesAClosedRecordset) {
  const auto rows = connection->Execute(u"UPDATE Trial SET Number = 5 WHERE Number = 3", -1);
  EXPECT_EQ(ErrorOf([&] { rows->Eof(); }).number, 3704);
  EXPECT_EQ(Scalar(u"SELECT Name FROM Trial WHERE Number = 5"), Value(automation::Null()));
}

TEST_P(RecordsetContract, StatementThatFindsNothingToChangeSucceeds) {
  EXPECT_EQ(ErrorOf([&] { Run(u"DELETE FROM Trial WHERE Number = 0"); }).number, 0);
}

TEST_P(RecordsetContract, RecordsetOpenedOnAStatementWithoutRowsStaysClosed) {
  const auto recordset = Query(u"DELETE FROM Trial WHERE Number = 3");
  EXPECT_EQ(ErrorOf([&] { recordset->Eof(); }).number, 3704);
  EXPECT_EQ(Scalar(u"SELECT COUNT(*) FROM Trial"), Number(2));
}

}  // namespace
}  // namespace contract
