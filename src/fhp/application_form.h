#pragma once

#include "exchange/request_document.h"
#include "fhp/application_records.h"

namespace fhp {

// Adds form "108692", the application itself: its fixed fields, then clinical status and
// treatment plan. Error 94 for a Null in a required column (docs/application-document.md lists
// them).
void AddApplicationForm(exchange::RequestDocument& document, const ApplicationRecords& records);

}  // namespace fhp
