// The texts by which people and the host recognise an application.
#pragma once

#include <cstdint>
#include <string>

#include "fhp/application_records.h"

namespace fhp {

// The numbers that the host called with; they may differ from those in the application's row.
struct HostArguments {
  std::int32_t pid;
  std::int32_t bid;
  std::int32_t rid;
  std::int32_t fhpId;
};

// What the link program hands back unchanged: the arguments and the row's CaseNo, joined by "&". A
// Null CaseNo leaves nothing behind the last "&".
std::u16string UserDefData(const HostArguments& arguments, const Record& application);

// "FHP", the birth date as YYMMDD, the patient's initials. A Null name adds nothing.
std::u16string CaseTitle(const ApplicationRecords& records);

}  // namespace fhp
