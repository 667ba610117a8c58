#include "odbc/column.h"

#include <algorithm>
#include <array>

#include "automation/text.h"
#include "odbc/api.h"

namespace odbc {
namespace {

constexpr std::array kNamedKinds = {
    NamedKind{u"bool", ColumnKind::Boolean},      NamedKind{u"boolean", ColumnKind::Boolean},
    NamedKind{u"money", ColumnKind::Currency},    NamedKind{u"smallmoney", ColumnKind::Currency},
    NamedKind{u"currency", ColumnKind::Currency}, NamedKind{u"numeric", ColumnKind::Decimal},
    NamedKind{u"decimal", ColumnKind::Decimal},
};

struct NumberedKind {
  std::int16_t sqlType;
  ColumnKind kind;
};

constexpr std::array kNumberedKinds = {
    NumberedKind{SQL_BIT, ColumnKind::Boolean},
    NumberedKind{SQL_TINYINT, ColumnKind::Int16},
    NumberedKind{SQL_SMALLINT, ColumnKind::Int16},
    NumberedKind{SQL_INTEGER, ColumnKind::Int32},
    NumberedKind{SQL_BIGINT, ColumnKind::BigInt},
    NumberedKind{SQL_REAL, ColumnKind::Single},
    NumberedKind{SQL_FLOAT, ColumnKind::Double},
    NumberedKind{SQL_DOUBLE, ColumnKind::Double},
    NumberedKind{SQL_NUMERIC, ColumnKind::Decimal},
    NumberedKind{SQL_DECIMAL, ColumnKind::Decimal},
    NumberedKind{SQL_TYPE_DATE, ColumnKind::Date},
    NumberedKind{SQL_TYPE_TIMESTAMP, ColumnKind::Date},
    NumberedKind{SQL_TYPE_TIME, ColumnKind::Time},
    // The numbers of ODBC 2, which older drivers still return.
    NumberedKind{SQL_DATE, ColumnKind::Date},
    NumberedKind{SQL_TIMESTAMP, ColumnKind::Date},
    NumberedKind{SQL_TIME, ColumnKind::Time},
    NumberedKind{SQL_BINARY, ColumnKind::Binary},
    NumberedKind{SQL_VARBINARY, ColumnKind::Binary},
    NumberedKind{SQL_LONGVARBINARY, ColumnKind::Binary},
};

std::optional<ColumnKind> FindByName(const DriverType& type, std::span<const NamedKind> kinds) {
  const auto found = std::find_if(kinds.begin(), kinds.end(), [&](const NamedKind& entry) {
    return automation::EqualsNoCase(entry.typeName, type.name) &&
           entry.size.value_or(type.size) == type.size &&
           entry.scale.value_or(type.scale) == type.scale;
  });
  return found == kinds.end() ? std::nullopt : std::optional(found->kind);
}

ColumnKind KindOfNumber(std::int16_t sqlType) {
  const auto* const numbered =
      std::find_if(kNumberedKinds.begin(), kNumberedKinds.end(),
                   [&](const auto& entry) { return entry.sqlType == sqlType; });
  return numbered == kNumberedKinds.end() ? ColumnKind::Text : numbered->kind;
}

}  // namespace

ColumnKind KindOf(const DriverType& type, std::span<const NamedKind> own) {
  if (const auto kind = FindByName(type, own)) {
    return *kind;
  }
  return FindByName(type, kNamedKinds).value_or(KindOfNumber(type.number));
}

}  // namespace odbc
