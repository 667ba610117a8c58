// What the export reads from the host's database before it writes anything.
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
  // Whether the cost estimate belongs to the application, and its rows if so.
  bool includeEstimate = false;
  Record estimateRows;
};

// Reads the application with all that belongs to it through gDB. Provider, clinician and patient
// are those of the application's row. Error 91 when one of them is not there, 94 for a Null among
// their keys, dates or the provider's postcode.
ApplicationRecords ReadApplicationRecords(std::int32_t fhpId);

}  // namespace fhp
