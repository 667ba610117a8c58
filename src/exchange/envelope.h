// What all request files have in common: the envelope, the announcement of the answer, the names of
// the files.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "exchange/element.h"
#include "exchange/request_kinds.h"

namespace exchange {

// The class of the window that receives the link program's messages.
inline constexpr std::u16string_view kNotificationClass = u"KestraToVilnor";

// A file of the exchange directory: the word is joined to the directory and the key without any
// separator ("\InNewCase" and 4711 give "\InNewCase4711.xml"). Kept: both sides of the exchange
// build their names this way.
std::u16string ExchangeFile(std::u16string_view directory, std::u16string_view word,
                            std::u16string_view key);

// The root element of a request file.
Element NewEnvelope();
// Writes the request file and returns its path.
std::u16string Save(const Element& envelope, const std::u16string& path);

// A request that is answered, while it is written.
class AnsweredRequest {
 public:
  // From here on the answer is the thread's pending result.
  AnsweredRequest(RequestKind kind, std::int32_t key, std::u16string folder);

  // Appends the request's element with its Result block: which answer is expected, and where.
  Element& Add(std::u16string_view name, std::u16string userDefData);
  // Writes the file and returns its path. An older answer that nobody has read is set aside first,
  // for the new one would take its place; when it cannot be, nothing is written.
  std::u16string Save() const;

 private:
  RequestKind kind_;
  std::int32_t key_;
  std::u16string folder_;
  std::u16string resultPath_;
  Element envelope_ = NewEnvelope();
};

// Where the answer to the thread's latest request is expected ("" before the first).
const std::u16string& PendingResultPath();

}  // namespace exchange
