#include "db/scalar_value.h"

#include "db/connection_state.h"
#include "util/error_trap.h"

namespace db {
namespace {

constexpr platform::Procedure kProcedure = u" in GetScalarValue";

}  // namespace

automation::Value GetScalarValue(const std::u16string& statement) {
  return util::UnderTrap(kProcedure, util::kModBVilnorIcon,
                         [&] { return ReadScalarValue(statement); });
}

automation::Value ReadScalarValue(const std::u16string& statement) {
  const auto rows = SharedConnection().Execute(statement, platform::kOptionsUnspecified);
  return rows->Eof() ? automation::Value() : rows->Field(0);
}

void ShowScalarError(const automation::AutomationError& error) {
  util::UnderTrap(kProcedure, util::kModBVilnorIcon,
                  [&] { throw automation::AutomationError(error); });
}

}  // namespace db
