// What all request files have in common: the envelope, the announcement of the answer, the names of
// the files.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "exchange/element.h"

namespace exchange {

// Window messages by which the link program tells that a result is ready; the request's key comes
// back as the message's first parameter.
enum class ResultMessage : std::int32_t {
  NewFHP = 10001,     // key: FHP id
  NewCase = 10002,    // key: PID
  ExistCase = 10009,  // key: VilnorId
};

// The class of the window that receives them.
inline constexpr std::u16string_view kNotificationClass = u"KestraToVilnor";

// A file of the exchange directory: the word is joined to the directory and the key without any
// separator ("\InNewCase" and 4711 give "\InNewCase4711.xml"). Kept: both sides of the exchange
// build their names this way.
std::u16string ExchangeFile(std::u16string_view directory, std::u16string_view word,
                            std::u16string_view key);

// The Result block: which answer the request expects, and where.
struct ExpectedResult {
  std::u16string resultPath;
  std::u16string userDefData;
  ResultMessage message;
  std::int32_t key;
};

// The root element of a request file.
Element NewEnvelope();
// Appends the Result block to the request element.
void AddResultBlock(Element& request, const ExpectedResult& expected);
// Writes the request file and returns its path.
std::u16string Save(const Element& envelope, const std::u16string& path);
// The same for a request that is answered. An older answer that nobody has read is set aside first,
// for the new one would take its place; when it cannot be, nothing is written.
std::u16string SaveExpecting(const std::u16string& resultPath, const Element& envelope,
                             const std::u16string& path);

// Where the answer to the thread's latest request is expected ("" before the first).
std::u16string& PendingResultPath();

}  // namespace exchange
