#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "automation/value.h"
#include "platform/trace.h"

namespace platform {

// Why a document was not loaded; code 0 when it was.
struct ParseError {
  std::int32_t code = 0;
  // Character position in the file.
  std::int32_t filePosition = 0;
  std::u16string reason;
  // Why, in the trace's words.
  Reason refusal = Reason::Malformed;
};

// One XML document, loaded synchronously from a local file. A document type without declarations is
// accepted, but what it refers to is never fetched.
class ResultDocument {
 public:
  virtual ~ResultDocument() = default;
  virtual void Load(const std::u16string& path) = 0;
  virtual ParseError GetParseError() = 0;
  // The typed value of the first element with that name in document order, at any depth. Error 91
  // if there is none, 7 if it is longer than in any result (parser_limits.h).
  virtual automation::Value FirstValue(const std::u16string& tagName) = 0;
};

class ResultDocuments {
 public:
  virtual ~ResultDocuments() = default;
  // An empty document. Error 429 if the parser is not installed.
  virtual std::unique_ptr<ResultDocument> New() = 0;
};

}  // namespace platform
