#pragma once

#include <string>

#include "com/variant.h"
#include "platform/trace.h"
#include "windows/file_calls.h"

namespace windows {

// A result file's bytes in the form that MSXML loads.
struct DocumentSource {
  // Empty if the file cannot be read, is empty, or must not be given to a parser.
  com::Variant bytes;
  bool isFitToParse = true;
  // Why, if it is not loaded.
  platform::Reason refusal = platform::Reason::Malformed;
};

// Reads the file while nobody can write to it. Waits about a second for a writer to finish, because
// half a file is not a result.
DocumentSource ReadDocument(FileCalls& calls, const std::u16string& path);

}  // namespace windows
