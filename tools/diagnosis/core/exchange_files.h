// What kind of file of the exchange a name belongs to. The number or name in it stays unread: it
// may identify a patient.
#pragma once

#include <optional>
#include <string_view>

namespace diagnosis {

enum class FileKind {
  // A result that waits under the name of its request.
  Result,
  // One that could not be entered, or that a new request replaced.
  SetAsideResult,
  // One that was entered but could not be deleted.
  EnteredResult,
  Request,
  Search,
  // A request whose writing was cut short.
  UnfinishedRequest,
};

struct ExchangeFile {
  FileKind kind = FileKind::Request;
  // "nytt ärende", and for several; "" where the file's name does not tell.
  std::u16string_view subject;
  std::u16string_view subjects;
};

// Nothing for a file that does not belong to the exchange.
std::optional<ExchangeFile> ExchangeFileOf(std::u16string_view name);

}  // namespace diagnosis
