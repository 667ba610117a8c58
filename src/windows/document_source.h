#pragma once

#include <string>

#include "com/variant.h"
#include "windows/file_calls.h"

namespace windows {

// A result file's bytes as MSXML takes them.
struct DocumentSource {
  // Empty when they cannot be had, or are none, or may not be given to a parser.
  com::Variant bytes;
  bool isFitToParse = true;
};

// Reads the file with nobody writing it meanwhile. One that is being written is waited for, about a
// second, since half of it is no result.
DocumentSource ReadDocument(FileCalls& calls, const std::u16string& path);

}  // namespace windows
