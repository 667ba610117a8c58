#include "diagnosis/core/exchange_files.h"

#include <string>

#include "automation/text.h"
#include "exchange/request_kinds.h"
#include "exchange/request_writers.h"
#include "exchange/result_files.h"
#include "platform/unfinished_request.h"

namespace diagnosis {
namespace {

using exchange::RequestKind;

struct Subject {
  std::u16string_view one;
  std::u16string_view several;
};

Subject SubjectOf(RequestKind kind) {
  switch (kind) {
    case RequestKind::NewFHP:
      return {u"förhandsprövning", u"förhandsprövningar"};
    case RequestKind::NewCase:
      return {u"nytt ärende", u"nya ärenden"};
    case RequestKind::ExistCase:
      break;
  }
  return {u"öppnat ärende", u"öppnade ärenden"};
}

// A word of request_kinds.h without the separator of the folder.
std::u16string_view FirstWord(std::u16string_view word) {
  return word.substr(1);
}

bool Begins(std::u16string_view name, std::u16string_view word) {
  return automation::EqualsNoCase(name.substr(0, word.size()), word);
}

bool EndsAsXml(std::u16string_view name) {
  constexpr std::u16string_view extension = u".xml";
  return name.size() > extension.size() &&
         automation::EqualsNoCase(name.substr(name.size() - extension.size()), extension);
}

// A result that is set aside has the date and time in its name, behind a blank.
std::optional<FileKind> KindOf(std::u16string_view name, const exchange::RequestKindRow& row) {
  const std::u16string_view result = FirstWord(row.resultWord);
  if (Begins(name, result)) {
    return name.find(u' ') == std::u16string_view::npos ? FileKind::Result
                                                        : FileKind::SetAsideResult;
  }
  const std::u16string entered = std::u16string(exchange::kDealtWithWord) +
                                 std::u16string(result.substr(exchange::kResultWord.size()));
  if (Begins(name, entered)) {
    return FileKind::EnteredResult;
  }
  return Begins(name, FirstWord(row.requestWord)) ? std::optional(FileKind::Request) : std::nullopt;
}

}  // namespace

std::optional<ExchangeFile> ExchangeFileOf(std::u16string_view name) {
  if (platform::IsUnfinishedRequest(name)) {
    return ExchangeFile{FileKind::UnfinishedRequest, u"påbörjad begäran", u"påbörjade begäranden"};
  }
  if (!EndsAsXml(name)) {
    return std::nullopt;
  }
  for (const RequestKind kind : exchange::kRequestKinds) {
    if (const auto fileKind = KindOf(name, exchange::RowOf(kind))) {
      const Subject subject = SubjectOf(kind);
      return ExchangeFile{*fileKind, subject.one, subject.several};
    }
  }
  if (Begins(name, FirstWord(exchange::kSearchWord))) {
    return ExchangeFile{FileKind::Search, u"sökning", u"sökningar"};
  }
  return std::nullopt;
}

}  // namespace diagnosis
