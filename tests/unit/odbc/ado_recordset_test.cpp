#include "odbc/ado_recordset.h"

#include <gtest/gtest.h>

#include "automation/automation_error.h"
#include "fakes/printing.h"

namespace odbc {
namespace {

using automation::Value;
using fakes::ErrorNumberOf;

// Two rows: (1, "a"), (2, "b").
CachedRows TwoRows() {
  return {.columns = {{.name = u"Id", .kind = ColumnKind::Int32},
                      {.name = u"Name", .kind = ColumnKind::Text}},
          .rows = {{Value(std::int32_t{1}), Value(u"a")}, {Value(std::int32_t{2}), Value(u"b")}}};
}

AdoRecordset Static(LockType lockType) {
  return AdoRecordset(TwoRows(), CursorLocation::Client).Clone(lockType);
}

TEST(AdoRecordset, ServerSideRowsetIsForwardOnlyAndCannotBeCloned) {
  const AdoRecordset forward(TwoRows(), CursorLocation::Server);
  EXPECT_EQ(forward.CursorType(), CursorType::ForwardOnly);
  EXPECT_EQ(ErrorNumberOf([&] { forward.Clone(LockType::Unspecified); }), 3251);
}

TEST(AdoRecordset, ClientSideRowsetIsStatic) {
  EXPECT_EQ(AdoRecordset(TwoRows(), CursorLocation::Client).CursorType(), CursorType::Static);
}

TEST(AdoRecordset, CloneHasItsSourcesLockUnlessAnotherIsRequested) {
  const auto batch = Static(LockType::BatchOptimistic);
  EXPECT_EQ(batch.Clone(LockType::Unspecified).LockType(), LockType::BatchOptimistic);
  EXPECT_EQ(batch.Clone(LockType::ReadOnly).LockType(), LockType::ReadOnly);
}

TEST(AdoRecordset, RecordsetMovesBothWaysAndToEitherEnd) {
  auto rows = Static(LockType::ReadOnly);
  rows.MoveLast();
  EXPECT_EQ(rows.Field(u"Id"), Value(std::int32_t{2}));
  rows.MovePrevious();
  EXPECT_EQ(rows.Position(), 0U);
  rows.MovePrevious();
  EXPECT_TRUE(rows.Bof());
  EXPECT_EQ(ErrorNumberOf([&] { rows.MovePrevious(); }), 3021);
  EXPECT_EQ(ErrorNumberOf([&] { rows.Field(u"Id"); }), 3021);
  rows.MoveNext();
  EXPECT_EQ(rows.Field(u"Id"), Value(std::int32_t{1}));
  EXPECT_EQ(ErrorNumberOf([&] { rows.MoveTo(2); }), 3021);
}

TEST(AdoRecordset, TakenRowsArePassed) {
  auto rows = Static(LockType::BatchOptimistic);
  EXPECT_TRUE(rows.TakeRows(0).empty());
  const auto one = rows.TakeRows(1);
  ASSERT_EQ(one.size(), 1U);
  EXPECT_EQ(one.front().front(), Value(std::int32_t{1}));
  EXPECT_EQ(rows.Position(), 1U);
  EXPECT_EQ(rows.TakeRows(5).size(), 1U);
  EXPECT_TRUE(rows.Eof());
  EXPECT_EQ(ErrorNumberOf([&] { rows.TakeRows(1); }), 3021);
}

TEST(AdoRecordset, RowsWithAnEditThatWouldReachTheDatabaseAreNotTaken) {
  auto rows = Static(LockType::Optimistic);
  rows.SetField(u"Name", Value(u"x"));
  EXPECT_EQ(ErrorNumberOf([&] { rows.TakeRows(2); }), 3251);
  EXPECT_EQ(rows.Position(), 0U);
}

TEST(AdoRecordset, EmptyRecordsetIsAtBothEnds) {
  AdoRecordset none(CachedRows{.columns = TwoRows().columns, .rows = {}}, CursorLocation::Client);
  EXPECT_TRUE(none.Bof());
  EXPECT_TRUE(none.Eof());
  EXPECT_EQ(ErrorNumberOf([&] { none.MoveFirst(); }), 3021);
  EXPECT_EQ(ErrorNumberOf([&] { none.MoveLast(); }), 3021);
}

TEST(AdoRecordset, EditIsUndoneByCancelUpdate) {
  auto rows = Static(LockType::BatchOptimistic);
  rows.SetField(u"Name", Value(u"x"));
  EXPECT_TRUE(rows.EditInProgress());
  rows.CancelUpdate();
  EXPECT_EQ(rows.Field(u"Name"), Value(u"a"));
}

TEST(AdoRecordset, BatchEditReachesClonesByUpdateOrByMovingOn) {
  auto rows = Static(LockType::BatchOptimistic);
  const auto clone = rows.Clone(LockType::Unspecified);
  rows.SetField(u"Name", Value(u"x"));
  rows.Update();
  EXPECT_EQ(clone.Field(u"Name"), Value(u"x"));
  rows.SetField(u"Name", Value(automation::Null()));
  rows.MoveLast();
  EXPECT_TRUE(clone.Field(u"Name").IsNull());
}

TEST(AdoRecordset, PendingBatchEditIsDiscardedByClose) {
  auto rows = Static(LockType::BatchOptimistic);
  const auto clone = rows.Clone(LockType::Unspecified);
  rows.SetField(u"Name", Value(u"x"));
  rows.Close();
  EXPECT_EQ(clone.Field(u"Name"), Value(u"a"));
}

TEST(AdoRecordset, EditThatNeedsTheDatabaseIsRefusedNotLostSilently) {
  auto rows = Static(LockType::Optimistic);
  rows.SetField(u"Name", Value(u"x"));
  EXPECT_EQ(rows.Field(u"Name"), Value(u"x"));
  EXPECT_EQ(ErrorNumberOf([&] { rows.MoveNext(); }), 3251);
  EXPECT_EQ(ErrorNumberOf([&] { rows.Update(); }), 3251);
  EXPECT_EQ(ErrorNumberOf([&] { rows.Close(); }), 3219);
  rows.CancelUpdate();
  rows.Close();
  EXPECT_FALSE(rows.IsOpen());
}

TEST(AdoRecordset, ValueOfAnotherTypeIsRefused) {
  auto rows = Static(LockType::BatchOptimistic);
  EXPECT_EQ(ErrorNumberOf([&] { rows.SetField(u"Id", Value(u"x")); }), 3421);
  EXPECT_EQ(ErrorNumberOf([&] { rows.SetField(u"Name", Value(1.5)); }), 3421);
  rows.SetField(u"Id", Value(std::int16_t{5}));
  EXPECT_EQ(rows.Field(u"Id"), Value(std::int16_t{5}));
}

}  // namespace
}  // namespace odbc
