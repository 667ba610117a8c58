// The common part of all request files: the envelope, the announcement of the answer, the file
// names.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "exchange/request_document.h"
#include "exchange/request_kinds.h"

namespace exchange {

// The class of the window that receives the link program's messages.
inline constexpr std::u16string_view kNotificationClass = u"KestraToVilnor";

// The path of a file in the exchange directory: directory, word and key are joined without any
// separator ("\InNewCase" and 4711 give "\InNewCase4711.xml"). Kept: both sides of the exchange
// build their names this way.
std::u16string ExchangeFile(std::u16string_view directory, std::u16string_view word,
                            std::u16string_view key);

// Finishes the document, puts the request file in place and returns its path.
std::u16string Save(RequestDocument& document, const std::u16string& path);

// A request that expects an answer.
class AnsweredRequest {
 public:
  // From here on the answer is the thread's pending result.
  AnsweredRequest(RequestKind kind, std::int32_t key, std::u16string folder);

  // Writes the file and returns its path: the request's element with its Result block, which says
  // what answer is expected, and where, and then what `body` adds to the document. Sets aside an
  // older unread answer first, because the new one would overwrite it; if that or `body` fails,
  // writes nothing.
  template <class Body>
  std::u16string Write(std::string_view name, Pieces userDefData, Body body) const {
    RequestDocument document;
    document.Add(name, [&] {
      AddResult(document, userDefData);
      body(document);
    });
    return Save(document);
  }

 private:
  void AddResult(RequestDocument& document, Pieces userDefData) const;
  std::u16string Save(RequestDocument& document) const;

  RequestKind kind_;
  std::int32_t key_;
  std::u16string folder_;
  std::u16string resultPath_;
};

// The path at which the answer to the thread's latest request is expected ("" before the first).
const std::u16string& PendingResultPath();

}  // namespace exchange
