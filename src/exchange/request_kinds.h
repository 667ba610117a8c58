// The kinds of request that the link program answers, and how they differ. A search expects no
// answer, so it is not among them.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "db/case_types.h"
#include "platform/trace.h"

namespace exchange {

// The value is the window message by which the link program announces the result; the message's
// first parameter is the request's key.
enum class RequestKind : std::int32_t {
  NewFHP = 10001,     // key: FHP id
  NewCase = 10002,    // key: PID
  ExistCase = 10009,  // key: VilnorId
};

inline constexpr std::array kRequestKinds = {RequestKind::NewFHP, RequestKind::NewCase,
                                             RequestKind::ExistCase};

struct RequestKindRow {
  // Prefixes of the file names, with the "\" that follows the exchange directory; see ExchangeFile.
  std::u16string_view requestWord;
  std::u16string_view resultWord;
  // Of the link record that a result creates; nothing if the record exists before the request.
  std::optional<db::CaseType> caseType;
  // Reads a result (result_readers.h). A failure while the file is read is reported under the first
  // procedure name, a later one under the second.
  void (*read)(const struct Reading& reading);
  platform::Procedure xmlProcedure;
  platform::Procedure procedure;
  platform::TracedFile traced;
};

RequestKindRow RowOf(RequestKind kind);
// Nothing for any other message.
std::optional<RequestKind> KindOf(std::int32_t message);

}  // namespace exchange
