#include "exchange/envelope.h"

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

void AddResultBlock(Element& request, const ExpectedResult& expected) {
  Element& result = request.Add(u"Result");
  result.Add(u"ResultPath", expected.resultPath);
  result.Add(u"ReturnWhen", u"7");
  result.Add(u"UserDefData", expected.userDefData);
  Element& notification = result.Add(u"WnDNotification");
  notification.Add(u"ClassName", std::u16string(kNotificationClass));
  notification.Add(u"MessageId", Decimal10(static_cast<std::int32_t>(expected.message)));
  notification.Add(u"WParam", Decimal10(expected.key));
}

std::u16string Save(const Element& envelope, const std::u16string& path) {
  platform::Current().files.ReplaceContents(path, Serialize(envelope));
  return path;
}

std::u16string SaveExpecting(const std::u16string& resultPath, const Element& envelope,
                             const std::u16string& path) {
  SetUnreadAside(resultPath);
  return Save(envelope, path);
}

std::u16string& PendingResultPath() {
  return platform::ThreadState<PendingResult>().path;
}

}  // namespace exchange
