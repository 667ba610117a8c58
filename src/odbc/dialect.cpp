#include "odbc/dialect.h"

#include <algorithm>
#include <array>

#include "automation/text.h"
#include "odbc/dialects.h"

namespace odbc {
namespace {

constexpr std::array kDialects = {&kSqlite, &kPostgresql, &kMariadb};

}  // namespace

const Dialect& DialectOf(std::u16string_view name) {
  const auto* const found =
      std::find_if(kDialects.begin(), kDialects.end(),
                   [named = automation::UCase(name)](const Dialect* dialect) {
                     return automation::InStr(1, named, automation::UCase(dialect->product)) > 0;
                   });
  return found == kDialects.end() ? kUnknownProduct : **found;
}

}  // namespace odbc
