#include "exchange/linked_case.h"

#include "db/connection_state.h"
#include "db/db_vilnor.h"

namespace exchange {

std::u16string LinkedCaseId(std::int32_t vilnorId) {
  std::u16string caseId = db::RenewGDB()->GetCaseIdByVilnorId(vilnorId);
  db::ReleaseGDB();
  return caseId;
}

}  // namespace exchange
