#include "exchange/envelope.h"

#include <utility>

#include "automation/text.h"
#include "exchange/result_files.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "platform/thread_state.h"

namespace exchange {
namespace {

using automation::Decimal10;

struct PendingResult {
  std::u16string path;
};

PendingResult& Pending() {
  return platform::ThreadState<PendingResult>();
}

}  // namespace

std::u16string ExchangeFile(std::u16string_view directory, std::u16string_view word,
                            std::u16string_view key) {
  return std::u16string(directory).append(word).append(key).append(u".xml");
}

AnsweredRequest::AnsweredRequest(RequestKind kind, std::int32_t key, std::u16string folder)
    : kind_(kind),
      key_(key),
      folder_(std::move(folder)),
      resultPath_(ExchangeFile(folder_, RowOf(kind).resultWord, Decimal10(key))) {
  Pending().path = resultPath_;
}

void AnsweredRequest::AddResult(RequestDocument& document, Pieces userDefData) const {
  document.Add("Result", [&] {
    document.Add("ResultPath", {resultPath_});
    document.Add("ReturnWhen", {u"7"});
    document.Add("UserDefData", userDefData);
    document.Add("WnDNotification", [&] {
      document.Add("ClassName", {kNotificationClass});
      document.Add("MessageId", {Decimal10(static_cast<std::int32_t>(kind_))});
      document.Add("WParam", {Decimal10(key_)});
    });
  });
}

std::u16string AnsweredRequest::Save(RequestDocument& document) const {
  SetUnreadAside(resultPath_, RowOf(kind_).traced);
  return exchange::Save(document, ExchangeFile(folder_, RowOf(kind_).requestWord, Decimal10(key_)));
}

std::u16string Save(RequestDocument& document, const std::u16string& path) {
  platform::Current().files.ReplaceContents(path, document.Finish());
  return path;
}

const std::u16string& PendingResultPath() {
  return Pending().path;
}

}  // namespace exchange
