// The result files that the link program leaves: read, entered into the link records and the
// journal, deleted. Nothing is raised; what fails is shown. A result that the database kept out is
// set aside, one that could not be read keeps its name. Kept: a file that is not there or cannot be
// parsed ends its reading without a word.
#pragma once

#include <cstdint>
#include <string>

namespace exchange {

// What the readers need of the object that they run on.
class ResultReaderHost {
 public:
  virtual ~ResultReaderHost() = default;
  // The exchange directory, "" when it cannot be found (which the user has then been told).
  virtual std::u16string GetVilnorOutputPath() = 0;
  // Tells a connected host that its journal or link records have changed.
  virtual void RaiseUpdateJournal() = 0;
};

void ReadNewFHP(std::int32_t fhpId, ResultReaderHost& host);
void ReadNewCase(std::int32_t pid, ResultReaderHost& host);
void ReadExistCase(std::int32_t vilnorId, ResultReaderHost& host);

}  // namespace exchange
