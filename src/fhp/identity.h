// The texts that identify an application to people and to the host.
#pragma once

#include <cstdint>
#include <string>

#include "fhp/application_records.h"

namespace fhp {

// The host's arguments; they may differ from the application's row.
struct HostArguments {
  std::int32_t pid;
  std::int32_t bid;
  std::int32_t rid;
  std::int32_t fhpId;
};

// The text that the link program returns unchanged: the arguments and the row's CaseNo, joined by
// "&". For a Null CaseNo nothing follows the last "&".
std::u16string UserDefData(const HostArguments& arguments, const Record& application);

// "FHP", the birth date as YYMMDD, the patient's initials. A Null name adds nothing.
std::u16string CaseTitle(const ApplicationRecords& records);

}  // namespace fhp
