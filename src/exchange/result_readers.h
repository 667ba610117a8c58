// Reads the link program's result files, enters them into the link records and the journal, and
// deletes them. Errors are shown, not raised. A result that could not be entered into the database
// is set aside; one that could not be read keeps its name. Kept: a missing or malformed file is
// ignored silently.
#pragma once

#include <cstdint>
#include <string>

#include "exchange/events.h"
#include "exchange/request_kinds.h"

namespace exchange {

// The result of the request with this key. `folder` is the exchange directory, "" if it could not
// be found. `events` is notified of changes; nullptr if no host listens.
struct Reading {
  RequestKind kind;
  std::int32_t key;
  std::u16string folder;
  Events* events;
};

// Reads it with the reader in its kind's row.
void ReadResult(const Reading& reading);

// The readers in the rows: for a new application or case, and for an opened case.
void ReadNewResult(const Reading& reading);
void ReadExistResult(const Reading& reading);

}  // namespace exchange
