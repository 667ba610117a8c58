#include "exchange/linked_case.h"

#include "db/connection_state.h"
#include "db/db_vilnor.h"

namespace exchange {

util::Attempt<std::u16string> LinkedCaseId(std::int32_t vilnorId) {
  auto caseId = db::RenewGDB()->TryGetCaseIdByVilnorId(vilnorId);
  db::ReleaseGDB();
  return caseId;
}

}  // namespace exchange
