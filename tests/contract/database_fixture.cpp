#include "contract/database_fixture.h"

namespace contract {

void DatabaseContract::SetUp() {
  connection = NewOpenConnection();
  Run(u"DROP TABLE IF EXISTS Trial");
  Run(u"CREATE TABLE Trial (TrialId " + GetParam().identityType +
      u", Number integer, Small smallint, Big bigint, Flag boolean, Ratio double precision,"
      u" Single " +
      GetParam().singleType + u", Amount numeric(10,2), Price " + GetParam().moneyType +
      u", Moment " + GetParam().momentType +
      u", Day date, Clock time, Name varchar(50) UNIQUE, Code char(5), Note " +
      GetParam().longTextType + u")");
}

void DatabaseContract::TearDown() {
  connection = NewOpenConnection();
  Run(u"DROP TABLE IF EXISTS Trial");
}

std::unique_ptr<platform::Connection> DatabaseContract::NewOpenConnection() {
  auto opened = database->NewConnection();
  opened->Open(GetParam().connectionString, u"", u"", platform::kOptionsUnspecified);
  return opened;
}

std::unique_ptr<platform::Recordset> DatabaseContract::Query(const std::u16string& statement) {
  auto recordset = database->NewRecordset();
  recordset->SetCursorLocation(platform::CursorLocation::Client);
  recordset->Open(statement, *connection, platform::CursorType::Static,
                  platform::LockType::BatchOptimistic, platform::kOptionsUnspecified);
  return recordset;
}

automation::Value DatabaseContract::Scalar(const std::u16string& statement) {
  return connection->Execute(statement, platform::kOptionsUnspecified)->Field(0);
}

INSTANTIATE_TEST_SUITE_P(Products, DatabaseContract, testing::ValuesIn(Products()),
                         [](const auto& instance) { return instance.param.name; });

}  // namespace contract
