// The result files that the link program leaves: read, entered into the link records and the
// journal, deleted. Nothing is raised; what fails is shown. A result that the database kept out is
// set aside, one that could not be read keeps its name. Kept: a file that is not there or cannot be
// parsed ends its reading without a word.
#pragma once

#include <cstdint>
#include <string>

#include "exchange/events.h"
#include "exchange/request_kinds.h"

namespace exchange {

// The result of the request with this key. `folder` is the exchange directory, "" when it could not
// be found. `events` hears of what has changed, nullptr where no host listens.
struct Reading {
  RequestKind kind;
  std::int32_t key;
  std::u16string folder;
  Events* events;
};

// Reads it as its kind's row says.
void ReadResult(const Reading& reading);

// The readers that the rows name: of a new application or case, of an opened case.
void ReadNewResult(const Reading& reading);
void ReadExistResult(const Reading& reading);

}  // namespace exchange
