#pragma once

#include "exchange/element.h"
#include "fhp/application_records.h"

namespace fhp {

// Appends form "108696", the cost estimate: the parties, the rows that the compensation rule
// accepts, their sum and the compensation. Reads the estimate rows to their end and closes them.
// Error 6 when a count or its product leaves 32 bits, or the row counter 16; 94 when a row that the
// rule has to judge has no registration date.
void AddCostEstimate(exchange::Element& contribution, ApplicationRecords& records);

}  // namespace fhp
