#include "exchange/envelope.h"

#include <utility>

#include "automation/text.h"
#include "exchange/result_files.h"
#include "exchange/serializer.h"
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

Element NewEnvelope() {
  Element envelope(u"Envelope");
  envelope.SetAttribute(u"LIFFVersion", u"2.0");
  return envelope;
}

AnsweredRequest::AnsweredRequest(RequestKind kind, std::int32_t key, std::u16string folder)
    : kind_(kind),
      key_(key),
      folder_(std::move(folder)),
      resultPath_(ExchangeFile(folder_, RowOf(kind).resultWord, Decimal10(key))) {
  Pending().path = resultPath_;
}

Element& AnsweredRequest::Add(std::u16string_view name, std::u16string userDefData) {
  Element& request = envelope_.Add(name);
  Element& result = request.Add(u"Result");
  result.Add(u"ResultPath", resultPath_);
  result.Add(u"ReturnWhen", u"7");
  result.Add(u"UserDefData", std::move(userDefData));
  Element& notification = result.Add(u"WnDNotification");
  notification.Add(u"ClassName", std::u16string(kNotificationClass));
  notification.Add(u"MessageId", Decimal10(static_cast<std::int32_t>(kind_)));
  notification.Add(u"WParam", Decimal10(key_));
  return request;
}

std::u16string AnsweredRequest::Save() const {
  SetUnreadAside(resultPath_, RowOf(kind_).traced);
  return exchange::Save(envelope_,
                        ExchangeFile(folder_, RowOf(kind_).requestWord, Decimal10(key_)));
}

std::u16string Save(const Element& envelope, const std::u16string& path) {
  platform::Current().files.ReplaceContents(path, Serialize(envelope));
  return path;
}

const std::u16string& PendingResultPath() {
  return Pending().path;
}

}  // namespace exchange
