// The host's way of writing statements: @@Identity, date literals, quotes.
#include "contract/database_fixture.h"

namespace contract {
namespace {

using automation::Value;

class StatementContract : public DatabaseContract {};

INSTANTIATE_TEST_SUITE_P(Products, StatementContract, testing::ValuesIn(Products()),
                         [](const auto& instance) { return instance.param.name; });

Value Number(std::int32_t number) {
  return number;
}

std::u16string Around(const std::u16string& before, const std::u16string& text,
                      const std::u16string& behind) {
  return before + text + behind;
}

TEST_P(StatementContract, IdentityIsTheKeyOfTheLastInsertOnTheConnection) {
  Run(u"INSERT INTO Trial (Number) VALUES (10)");
  const auto first = Scalar(u"Select @@Identity");
  Run(u"INSERT INTO Trial (Number) VALUES (20)");
  const auto second = Scalar(u"select @@IDENTITY");
  EXPECT_TRUE(first.Is<std::int32_t>());
  EXPECT_EQ(Scalar(u"SELECT TrialId FROM Trial WHERE Number = 10"), first);
  EXPECT_EQ(Scalar(u"SELECT TrialId FROM Trial WHERE Number = 20"), second);
}

TEST_P(StatementContract, IdentityIsReadInsideATransactionAndApartFromOtherConnections) {
  const auto other = NewOpenConnection();
  other->Execute(u"INSERT INTO Trial (Number) VALUES (1)", -1);
  other->Execute(u"INSERT INTO Trial (Number) VALUES (2)", -1);

  connection->BeginTrans();
  Run(u"INSERT INTO Trial (Number) VALUES (30)");
  const auto key = Scalar(u"Select @@Identity");
  connection->CommitTrans();
  EXPECT_EQ(Scalar(u"SELECT TrialId FROM Trial WHERE Number = 30"), key);
  EXPECT_EQ(other->Execute(u"Select @@Identity", -1)->Field(0),
            Scalar(u"SELECT TrialId FROM Trial WHERE Number = 2"));
}

TEST_P(StatementContract, HashDateIsADateWhereverItStands) {
  Run(u"INSERT INTO Trial (Number, Moment, Day) VALUES (1, #11-16-2026 14:05:00#, #03-01-1912#)");
  const auto row = Query(u"SELECT Moment, Day FROM Trial");
  EXPECT_EQ(row->Field(u"Moment"), Value(Moment(2026, 11, 16, 14, 5)));
  EXPECT_EQ(row->Field(u"Day"), Value(Moment(1912, 3, 1)));
  EXPECT_EQ(Scalar(u"SELECT Number FROM Trial WHERE Moment = #11-16-2026 14:05:00#"), Number(1));
  Run(u"UPDATE Trial SET Moment = #02-03-2027 23:59:59#");
  EXPECT_EQ(Scalar(u"SELECT Moment FROM Trial"), Value(Moment(2027, 2, 3, 23, 59, 59)));
}

TEST_P(StatementContract, QuotedMonthFirstDateIsADateInADateColumn) {
  Run(u"INSERT INTO Trial (Number,Name,Moment,Day) VALUES "
      u"(1,'x','02-03-2026 14:05:00','12-01-1999')");
  const auto row = Query(u"SELECT Moment, Day FROM Trial");
  EXPECT_EQ(row->Field(u"Moment"), Value(Moment(2026, 2, 3, 14, 5)));
  EXPECT_EQ(row->Field(u"Day"), Value(Moment(1999, 12, 1)));
  EXPECT_EQ(Scalar(u"SELECT Number FROM Trial WHERE Moment >= '02-03-2026 14:05:00'"), Number(1));
  EXPECT_EQ(Scalar(u"SELECT Number FROM Trial WHERE Moment < '01-01-2027 00:00:00'"), Number(1));
  Run(u"UPDATE Trial SET Moment = '01-02-2027 00:00:01' WHERE Number = 1");
  EXPECT_EQ(Scalar(u"SELECT Moment FROM Trial"), Value(Moment(2027, 1, 2, 0, 0, 1)));
}

TEST_P(StatementContract, BothKindsOfLiteralStoreTheSame) {
  Run(u"INSERT INTO Trial (Number, Moment) VALUES (1, #11-16-2026 14:05:00#)");
  Run(u"INSERT INTO Trial (Number, Moment) VALUES (2, '11-16-2026 14:05:00')");
  EXPECT_EQ(Scalar(u"SELECT COUNT(*) FROM Trial a, Trial b WHERE a.Moment = b.Moment"), Number(4));
}

TEST_P(StatementContract, TextThatLooksLikeADateIsUnchangedInATextColumn) {
  for (const std::u16string text : {u"11-16-2026 14:05:00", u"11-16-2026", u"#11-16-2026#",
                                    u"Select @@Identity", u"den #11-16-2026 14:05:00# kl"}) {
    Run(u"DELETE FROM Trial");
    Run(Around(u"INSERT INTO Trial (Name, Moment) VALUES ('", text, u"', #11-16-2026 14:05:00#)"));
    Run(Around(u"UPDATE Trial SET Note = '", text, u"'"));
    const auto row =
        Query(Around(u"SELECT Name, Note, Moment FROM Trial WHERE Name = '", text, u"'"));
    EXPECT_EQ(row->Field(u"Name"), Value(text));
    EXPECT_EQ(row->Field(u"Note"), Value(text));
    EXPECT_EQ(row->Field(u"Moment"), Value(Moment(2026, 11, 16, 14, 5)));
  }
}

TEST_P(StatementContract, DoubledQuoteBeforeALiteralDoesNotHideIt) {
  Run(u"INSERT INTO Trial (Note, Moment) VALUES ('O''Brien #1', #11-16-2026 14:05:00#)");
  const auto row = Query(u"SELECT Note, Moment FROM Trial");
  EXPECT_EQ(row->Field(u"Note"), Value(u"O'Brien #1"));
  EXPECT_EQ(row->Field(u"Moment"), Value(Moment(2026, 11, 16, 14, 5)));
}

TEST_P(StatementContract, ImpossibleCalendarDateIsRefused) {
  EXPECT_NE(ErrorOf([&] { Run(u"INSERT INTO Trial (Moment) VALUES (#02-30-2026#)"); }).number, 0);
  EXPECT_EQ(Scalar(u"SELECT COUNT(*) FROM Trial"), Number(0));
}

TEST_P(StatementContract, NamesAreComparedIgnoringCase) {
  Run(u"insert into TRIAL (NUMBER) values (4)");
  EXPECT_EQ(Query(u"SELECT trial.Number FROM trial")->Field(u"nUMBER"), Number(4));
}

}  // namespace
}  // namespace contract
