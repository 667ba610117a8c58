#include "db/scalar_value.h"

#include "db/connection_state.h"
#include "util/guarded.h"

namespace db {

automation::Value GetScalarValue(const std::u16string& statement) {
  return util::Guarded(u" in GetScalarValue", util::kModBVilnorIcon, [&] {
    const auto rows = SharedConnection().Execute(statement, platform::kOptionsUnspecified);
    return rows->Eof() ? automation::Value() : rows->Field(0);
  });
}

}  // namespace db
