#include "simulator/core/request.h"

#include <array>
#include <charconv>
#include <limits>
#include <memory>
#include <optional>

#include "automation/automation_error.h"
#include "automation/conversion.h"
#include "automation/text.h"
#include "simulator/core/problem.h"

namespace simulator {
namespace {

using automation::AutomationError;
using automation::RuntimeError;

std::optional<std::u16string> Text(platform::ResultDocument& document, const char16_t* element) {
  try {
    return automation::ToText(document.FirstValue(element), {});
  } catch (const AutomationError& error) {
    if (error.Is(RuntimeError::ObjectNotSet)) {
      return std::nullopt;
    }
    throw;
  }
}

bool Has(platform::ResultDocument& document, const char16_t* element) {
  return Text(document, element).has_value();
}

std::u16string TextOrEmpty(platform::ResultDocument& document, const char16_t* element) {
  return Text(document, element).value_or(std::u16string());
}

std::u16string RequiredText(platform::ResultDocument& document, const char16_t* element) {
  const auto text = Text(document, element);
  if (!text) {
    throw Problem(u"Elementet " + std::u16string(element) + u" saknas.");
  }
  if (text->empty()) {
    throw Problem(u"Elementet " + std::u16string(element) + u" är tomt.");
  }
  return *text;
}

// A whole number in plain decimal, as the component writes it.
std::int32_t RequiredNumber(platform::ResultDocument& document, const char16_t* element,
                            std::int32_t smallest, std::int32_t largest) {
  const auto text = RequiredText(document, element);
  const std::string digits = automation::ToUtf8(text);
  std::int64_t number = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  const bool whole = read.ec == std::errc() && read.ptr == digits.data() + digits.size();
  if (!whole || number < smallest || number > largest) {
    throw Problem(u"Elementet " + std::u16string(element) + u" innehåller \u201D" + text +
                  u"\u201D, som inte är ett heltal mellan " + automation::Decimal10(smallest) +
                  u" och " + automation::Decimal10(largest) + u".");
  }
  return static_cast<std::int32_t>(number);
}

bool IsFullPath(std::u16string_view path) {
  const bool drive = path.size() > 3 && path[1] == u':' && path[2] == u'\\';
  return drive || path.starts_with(u"\\\\");
}

void RequireFile(platform::Files& files, const std::u16string& path) {
  std::int64_t length = 0;
  try {
    length = files.FileLength(path);
  } catch (const AutomationError& error) {
    throw Problem(error.Is(RuntimeError::FileNotFound) || error.Is(RuntimeError::PathNotFound)
                      ? u"Filen finns inte."
                      : u"Filen går inte att öppna: " + error.description());
  }
  if (length == 0) {
    throw Problem(u"Filen är tom (0 byte).");
  }
}

void RequireXml(platform::ResultDocument& document, const std::u16string& path) {
  document.Load(path);
  const auto error = document.GetParseError();
  if (error.code != 0) {
    throw Problem(u"Filen är inte giltig XML. Fel " + automation::Decimal10(error.code) +
                  u" vid tecken " + automation::Decimal10(error.filePosition) + u": " +
                  automation::Trim(error.reason));
  }
}

RequestKind KindOf(platform::ResultDocument& document) {
  if (!Has(document, u"Envelope")) {
    throw Problem(u"Filen är ingen begäran till Vilnor Link: elementet Envelope saknas.");
  }
  if (Has(document, u"NewCase")) {
    return Has(document, u"FormDescr") ? RequestKind::PriorApproval : RequestKind::NewCase;
  }
  if (Has(document, u"Case")) {
    return RequestKind::ExistingCase;
  }
  if (Has(document, u"SearchCase")) {
    return RequestKind::Search;
  }
  throw Problem(u"Envelope innehåller ingen begäran: varken NewCase, Case eller SearchCase finns.");
}

void ReadAnswerBlock(platform::ResultDocument& document, Request& request) {
  request.resultPath = RequiredText(document, u"ResultPath");
  if (!IsFullPath(request.resultPath)) {
    throw Problem(u"Elementet ResultPath innehåller \u201D" + request.resultPath +
                  u"\u201D, som inte är en fullständig sökväg.");
  }
  request.userDefData = TextOrEmpty(document, u"UserDefData");
  request.notification.className = RequiredText(document, u"ClassName");
  // Messages below 1024 are the system's own; a file must not make the simulator post one.
  constexpr std::int32_t firstApplicationMessage = 1024;
  constexpr std::int32_t lastMessage = 65535;
  request.notification.message = static_cast<std::uint32_t>(
      RequiredNumber(document, u"MessageId", firstApplicationMessage, lastMessage));
  request.notification.wParam =
      RequiredNumber(document, u"WParam", std::numeric_limits<std::int32_t>::min(),
                     std::numeric_limits<std::int32_t>::max());
}

Request ReadDocument(platform::ResultDocument& document) {
  Request request;
  request.kind = KindOf(document);
  request.title = TextOrEmpty(document, u"Title");
  request.firstName = TextOrEmpty(document, u"PatientFirstName");
  request.lastName = TextOrEmpty(document, u"PatientLastName");
  request.patientId = TextOrEmpty(document, u"PatientId");
  request.caseId = TextOrEmpty(document, u"CaseId");
  request.participant = TextOrEmpty(document, u"UserId");
  if (request.ExpectsAnswer()) {
    ReadAnswerBlock(document, request);
  }
  return request;
}

}  // namespace

std::u16string KindText(RequestKind kind) {
  constexpr std::array<const char16_t*, 4> texts = {u"Nytt ärende", u"Ny förhandsprövning",
                                                    u"Befintligt ärende",
                                                    u"Sökning av patientens ärenden"};
  return texts.at(static_cast<std::size_t>(kind));
}

Request ReadRequest(platform::Files& files, platform::ResultDocuments& documents,
                    const std::u16string& path) {
  try {
    RequireFile(files, path);
    const auto document = documents.New();
    RequireXml(*document, path);
    return ReadDocument(*document);
  } catch (const Problem& problem) {
    throw Problem(u"Begäran kan inte läsas.\r\n" + path + u"\r\n\r\n" + problem.text());
  } catch (const AutomationError& error) {
    throw Problem(u"Begäran kan inte läsas.\r\n" + path + u"\r\n\r\n" + error.description());
  }
}

}  // namespace simulator
