// The kinds of request that the link program answers, and what tells them apart. A search, which
// announces no answer, is none of them.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "db/case_types.h"

namespace exchange {

// By the window message with which the link program tells that the result is ready; the request's
// key comes back as the message's first parameter.
enum class RequestKind : std::int32_t {
  NewFHP = 10001,     // key: FHP id
  NewCase = 10002,    // key: PID
  ExistCase = 10009,  // key: VilnorId
};

struct RequestKindRow {
  // What the files' names begin with, the exchange directory's "\" included; see ExchangeFile.
  std::u16string_view requestWord;
  std::u16string_view resultWord;
  // Of the link record that a result makes; nothing where the record is there before the request.
  std::optional<db::CaseType> caseType;
  // Reads a result (result_readers.h). What fails while the file is read is reported as the first
  // procedure's, what fails afterwards as the second's.
  void (*read)(const struct Reading& reading);
  std::u16string_view xmlProcedure;
  std::u16string_view procedure;
};

RequestKindRow RowOf(RequestKind kind);
// Nothing for any other message.
std::optional<RequestKind> KindOf(std::int32_t message);

}  // namespace exchange
