// Transactions, and the provider's errors for failed statements.
#include "contract/database_fixture.h"

namespace contract {
namespace {

using automation::Value;

class TransactionContract : public DatabaseContract {
 protected:
  Value Count() { return Scalar(u"SELECT COUNT(*) FROM Trial"); }
};

INSTANTIATE_TEST_SUITE_P(Products, TransactionContract, testing::ValuesIn(Products()),
                         [](const auto& instance) { return instance.param.name; });

Value Number(std::int32_t number) {
  return number;
}

TEST_P(TransactionContract, CommitKeepsTheChangesForOthersToSee) {
  connection->BeginTrans();
  Run(u"INSERT INTO Trial (Number) VALUES (1)");
  Run(u"INSERT INTO Trial (Number) VALUES (2)");
  connection->CommitTrans();
  EXPECT_EQ(NewOpenConnection()->Execute(u"SELECT COUNT(*) FROM Trial", -1)->Field(0), Number(2));
}

TEST_P(TransactionContract, RollbackUndoesAllChanges) {
  connection->BeginTrans();
  Run(u"INSERT INTO Trial (Number) VALUES (1)");
  Run(u"INSERT INTO Trial (Number) VALUES (2)");
  connection->RollbackTrans();
  EXPECT_EQ(Count(), Number(0));
}

TEST_P(TransactionContract, StatementsAfterATransactionAreCommittedOneByOne) {
  connection->BeginTrans();
  connection->RollbackTrans();
  Run(u"INSERT INTO Trial (Number) VALUES (1)");
  connection.reset();
  connection = NewOpenConnection();
  EXPECT_EQ(Count(), Number(1));
}

TEST_P(TransactionContract, CommitAndRollbackWithoutATransactionRaiseTheProvidersError) {
  EXPECT_EQ(ErrorOf([&] { connection->CommitTrans(); }).number, kNoTransaction);
  EXPECT_EQ(ErrorOf([&] { connection->RollbackTrans(); }).number, kNoTransaction);
  connection->BeginTrans();
  connection->CommitTrans();
  EXPECT_EQ(ErrorOf([&] { connection->RollbackTrans(); }).number, kNoTransaction);
}

TEST_P(TransactionContract, SecondTransactionInsideTheFirstIsRefused) {
  connection->BeginTrans();
  EXPECT_EQ(ErrorOf([&] { connection->BeginTrans(); }).number, kTransactionExists);
  connection->RollbackTrans();
}

TEST_P(TransactionContract, AfterAFailedStatementTheRollbackWorksAndSoDoesTheConnection) {
  connection->BeginTrans();
  Run(u"INSERT INTO Trial (Number) VALUES (1)");
  EXPECT_NE(ErrorOf([&] { Run(u"INSERT INTO NoSuchTable (Number) VALUES (2)"); }).number, 0);
  connection->RollbackTrans();
  EXPECT_EQ(Count(), Number(0));
  connection->BeginTrans();
  Run(u"INSERT INTO Trial (Number) VALUES (3)");
  connection->CommitTrans();
  EXPECT_EQ(Count(), Number(1));
}

TEST_P(TransactionContract, ConnectionReleasedInsideATransactionIsRolledBack) {
  connection->BeginTrans();
  Run(u"INSERT INTO Trial (Number) VALUES (1)");
  connection.reset();
  connection = NewOpenConnection();
  EXPECT_EQ(Count(), Number(0));
}

TEST_P(TransactionContract, InvalidSqlRaisesTheDriversText) {
  const auto raised = ErrorOf([&] { Run(u"SELEC 1"); });
  EXPECT_EQ(raised.number, kErrorsInCommand);
  EXPECT_THAT(raised.text, HasText(GetParam().syntaxText));
  EXPECT_THAT(raised.text, HasText(u"SELEC"));
}

TEST_P(TransactionContract, QuoteInsideAValueBreaksTheStatement) {
  const auto raised = ErrorOf(
      [&] { Run(u"INSERT INTO Trial (Name, Moment) VALUES ('O'Brien', #11-16-2026 14:05:00#)"); });
  EXPECT_EQ(raised.number, kErrorsInCommand);
  EXPECT_THAT(raised.text, HasText(GetParam().syntaxText));
  EXPECT_EQ(Count(), Number(0));
}

TEST_P(TransactionContract, MissingTableOrColumnIsNamed) {
  EXPECT_THAT(ErrorOf([&] { Run(u"SELECT 1 FROM nosuchtable"); }).text, HasText(u"nosuchtable"));
  EXPECT_THAT(ErrorOf([&] { Run(u"SELECT nosuchcolumn FROM Trial"); }).text,
              HasText(u"nosuchcolumn"));
}

TEST_P(TransactionContract, ViolatedConstraintHasItsOwnNumber) {
  Run(u"INSERT INTO Trial (Name) VALUES ('a')");
  EXPECT_EQ(ErrorOf([&] { Run(u"INSERT INTO Trial (Name) VALUES ('a')"); }).number,
            kIntegrityViolation);
}

}  // namespace
}  // namespace contract
