#include "db/query.h"

#include <utility>

#include "automation/text.h"
#include "platform/conversions.h"

namespace db {

platform::Recordset& OpenQuery(std::u16string statement, OpenMode mode) {
  std::u16string& gSql = CurrentConnectionState().gSql;
  gSql = std::move(statement);
  platform::Recordset& recordset = SharedRecordset();
  const bool isStatic = mode == OpenMode::Static;
  recordset.Open(gSql, SharedConnection(),
                 isStatic ? platform::CursorType::Static : platform::CursorType::Keyset,
                 isStatic ? platform::LockType::BatchOptimistic : platform::LockType::Optimistic,
                 platform::kOptionsUnspecified);
  return recordset;
}

void Execute(std::u16string statement) {
  CurrentConnectionState().gSql = std::move(statement);
  ExecuteCurrentSql();
}

void ExecuteCurrentSql() {
  SharedConnection().Execute(CurrentConnectionState().gSql, platform::kOptionsUnspecified);
}

std::int32_t NumberField(platform::Recordset& row, const std::u16string& field) {
  return platform::ToInt32(row.Field(field));
}

std::u16string TextField(platform::Recordset& row, const std::u16string& field) {
  return platform::ToText(row.Field(field));
}

std::unique_ptr<platform::Recordset> CloneOf(platform::Recordset& rows) {
  return rows.Clone(platform::LockType::Unspecified);
}

std::u16string StatementOf(const Lookup& lookup, std::int32_t key) {
  std::u16string statement(lookup.beforeKey);
  statement += automation::Decimal10(key);
  statement += lookup.afterKey;
  return statement;
}

}  // namespace db
