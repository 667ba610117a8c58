#include "odbc/statement.h"

#include <algorithm>
#include <array>
#include <utility>

#include "automation/conversion.h"
#include "odbc/column_value.h"

namespace odbc {
namespace {

constexpr std::size_t kNameUnits = 256;
// Units of text read at a time; most fields of the host fit into one piece.
constexpr std::size_t kPieceUnits = 1024;

}  // namespace

Statement::Statement(const ConnectionHandle& connection, const Dialect& dialect)
    : handle_(connection.get()), dialect_(dialect) {
  SQLSetStmtAttrW(handle_.get(), SQL_ATTR_QUERY_TIMEOUT, AsPointer(kStatementTimeoutSeconds), 0);
}

void Statement::Execute(std::u16string_view text) {
  Check(WithCalls(dialect_.textCalls, [&]<class Calls>(Calls /*calls*/) {
    auto encoded = Calls::Encode(text);
    return Calls::Execute(handle_.get(), encoded.data(), SQLINTEGER{SQL_NTS});
  }));
}

std::vector<Column> Statement::Columns() const {
  SQLSMALLINT count = 0;
  Check(SQLNumResultCols(handle_.get(), &count));
  std::vector<Column> columns;
  columns.reserve(static_cast<std::size_t>(count));
  for (SQLSMALLINT number = 1; number <= count; ++number) {
    columns.push_back(Describe(static_cast<SQLUSMALLINT>(number)));
  }
  return columns;
}

Column Statement::Describe(SQLUSMALLINT number) const {
  return WithCalls(dialect_.textCalls, [&]<class Calls>(Calls /*calls*/) {
    std::vector<typename Calls::Unit> name(kNameUnits);
    SQLSMALLINT length = 0;
    SQLSMALLINT type = 0;
    SQLULEN size = 0;
    SQLSMALLINT scale = 0;
    SQLSMALLINT nullable = SQL_NULLABLE;
    Check(Calls::DescribeColumn(handle_.get(), number, name.data(),
                                static_cast<SQLSMALLINT>(name.size()), &length, &type, &size,
                                &scale, &nullable));
    name.resize(std::min(static_cast<std::size_t>(length), name.size() - 1));
    const std::u16string typeName = TypeName(number);
    return Column{.name = Calls::Decode(name),
                  .kind = KindOf({.number = type, .name = typeName, .size = size, .scale = scale},
                                 dialect_.types),
                  .size = size,
                  .scale = scale,
                  .nullable = nullable != SQL_NO_NULLS};
  });
}

std::u16string Statement::TypeName(SQLUSMALLINT number) const {
  return WithCalls(dialect_.textCalls, [&]<class Calls>(Calls /*calls*/) {
    std::vector<typename Calls::Unit> name(kNameUnits);
    SQLSMALLINT bytes = 0;
    Check(Calls::ColumnAttribute(
        handle_.get(), number, SQLUSMALLINT{SQL_DESC_TYPE_NAME}, name.data(),
        static_cast<SQLSMALLINT>(name.size() * sizeof(name.front())), &bytes, nullptr));
    name.erase(std::find(name.begin(), name.end() - 1, 0), name.end());
    return Calls::Decode(name);
  });
}

bool Statement::Fetch() {
  const SQLRETURN result = SQLFetch(handle_.get());
  Check(result);
  return result != SQL_NO_DATA;
}

std::optional<std::u16string> Statement::ReadText(SQLUSMALLINT number) {
  return WithCalls(
      dialect_.textCalls, [&]<class Calls>(Calls /*calls*/) -> std::optional<std::u16string> {
        using Unit = typename Calls::Unit;
        std::vector<Unit> text;
        std::array<Unit, kPieceUnits> piece{};
        for (bool isLast = false; !isLast;) {
          SQLLEN bytesLeft = 0;
          const SQLRETURN result = SQLGetData(handle_.get(), number, Calls::kDataType, piece.data(),
                                              static_cast<SQLLEN>(sizeof(piece)), &bytesLeft);
          Check(result);
          if (bytesLeft == SQL_NULL_DATA) {
            return std::nullopt;
          }
          // Every piece but the last fills the buffer, up to its terminating zero.
          const std::size_t whole = piece.size() - 1;
          const auto unitsLeft = static_cast<std::size_t>(bytesLeft) / sizeof(Unit);
          isLast = result == SQL_NO_DATA || (bytesLeft >= 0 && unitsLeft <= whole);
          const auto units = result == SQL_NO_DATA ? 0 : std::min(unitsLeft, whole);
          text.insert(text.end(), piece.begin(),
                      piece.begin() + static_cast<std::ptrdiff_t>(units));
        }
        return Calls::Decode(text);
      });
}

automation::Value Statement::ReadSingle(SQLUSMALLINT number) {
  double single = 0;
  SQLLEN length = 0;
  Check(SQLGetData(handle_.get(), number, SQL_C_DOUBLE, &single, sizeof(single), &length));
  return length == SQL_NULL_DATA
             ? automation::Value(automation::Null())
             : automation::Value(automation::WidenSingle(static_cast<float>(single)));
}

automation::Value Statement::Read(SQLUSMALLINT number, ColumnKind kind) {
  if (kind == ColumnKind::Single && dialect_.singlesAreReadAsNumbers) {
    return ReadSingle(number);
  }
  auto text = ReadText(number);
  if (!text) {
    return automation::Null();
  }
  auto own = dialect_.ownReading == nullptr ? std::nullopt : dialect_.ownReading(*text, kind);
  return own ? std::move(*own) : ToValue(std::move(*text), kind);
}

CachedRows Statement::FetchAll() {
  CachedRows result{.columns = Columns(), .rows = {}};
  while (Fetch()) {
    Row row;
    row.reserve(result.columns.size());
    for (std::size_t i = 0; i < result.columns.size(); ++i) {
      row.push_back(Read(static_cast<SQLUSMALLINT>(i + 1), result.columns[i].kind));
    }
    result.rows.push_back(std::move(row));
  }
  return result;
}

std::int64_t Statement::AffectedRows() const {
  SQLLEN count = -1;
  Check(SQLRowCount(handle_.get(), &count));
  return count;
}

}  // namespace odbc
