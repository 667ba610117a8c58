#pragma once

#include "exchange/request_document.h"
#include "fhp/application_records.h"

namespace fhp {

// Adds form "108696", the cost estimate: the parties, the rows that the compensation rule
// accepts, their sum and the compensation. Error 6 if a
// count or its product exceeds 32 bits, or the row counter 16; 94 if a row that the rule must judge
// has no registration date.
void AddCostEstimate(exchange::RequestDocument& document, ApplicationRecords& records);

}  // namespace fhp
