// The data that the export reads from the host's database before it writes anything.
#pragma once

#include <cstdint>
#include <string>

#include "fhp/record.h"

namespace fhp {

struct ApplicationRecords {
  Record application;
  Record clinician;
  // The clinic.
  Record provider;
  Record patient;
  // The postal town of the provider.
  std::u16string city;
  // The patient's full personal identity number.
  std::u16string personNumber;
  // Whether the application has a cost estimate, and its rows if so.
  bool includeEstimate = false;
  Record estimateRows;
};

// Reads the application and all that belongs to it through gDB. Provider, clinician and patient
// come from the application's row. Error 91 if one of them does not exist, 94 for a Null among
// their keys, their dates or the provider's postcode.
ApplicationRecords ReadApplicationRecords(std::int32_t fhpId);

}  // namespace fhp
