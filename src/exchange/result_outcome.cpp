#include "exchange/result_outcome.h"

#include <utility>

#include "automation/automation_error.h"
#include "automation/text.h"
#include "exchange/result_document_reader.h"
#include "platform/dialogs.h"
#include "platform/platform.h"

namespace exchange {
namespace {

using automation::Decimal10;
using platform::Reason;

// Values of Cancelled. A result without the element counts as not cancelled.
constexpr std::int32_t kNotCancelled = 99;
constexpr std::int32_t kCancelled = 1;
constexpr std::int32_t kLastWithoutChange = 2;
constexpr std::int32_t kDeletedInLink = 3;

constexpr auto kWithdrawn = static_cast<std::int32_t>(Status::Withdrawn);

void ShowParseError(const platform::ParseError& error) {
  platform::Current().dialogs.Show({.text = u"XMLDOM Error " + Decimal10(error.code) + u"\r\nPos " +
                                            Decimal10(error.filePosition) + u"Reason " +
                                            error.reason,
                                    .title = {}});
}

ResultDocumentReader Load(ResultFile& file) {
  ResultDocumentReader document(file.path());
  file.TakeStamp();
  return document;
}

// The value of Cancelled; nothing if the file could not be loaded.
template <class Number>
std::optional<Number> ReadCancelled(const ResultDocumentReader& document, ResultFile& file) {
  if (const auto error = document.Error(); error.code != 0) {
    file.Because(error.refusal, error.code);
    return std::nullopt;
  }
  Number cancelled = kNotCancelled;
  document.Read(u"Cancelled", cancelled);
  return cancelled;
}

// Only the user's own No counts as No. If the host shuts down before the user answers, an error is
// raised and the result stays.
bool UserWantsLinkDeleted(ResultFile& file) {
  const platform::Answer answer =
      platform::Current().dialogs.Show({.text = u"Ärendet är borttaget i Vilnor Link\r\n\r\n"
                                                u"Ta bort kopplingen till ärendet i Kestra?",
                                        .title = u"Kestra Dental koppling till Vilnor Link",
                                        .icon = platform::Icon::Question,
                                        .buttons = platform::Buttons::YesNo});
  if (answer != platform::Answer::Yes && answer != platform::Answer::No) {
    file.Because(Reason::Unanswered);
    throw automation::AutomationError(automation::RuntimeError::AutomationFailure);
  }
  return answer == platform::Answer::Yes;
}

// For a case deleted in Vilnor Link: the outcome if the user wants its link deleted too.
std::optional<Outcome> IfWanted(Outcome outcome, ResultFile& file,
                                const util::Attempt<std::u16string>& linkedCase) {
  if (linkedCase.Failed()) {
    file.Because(Reason::DatabaseFailed);
    file.SetAside();
    return std::nullopt;
  }
  if (!UserWantsLinkDeleted(file)) {
    file.Because(Reason::LinkKept);
    file.Delete();
    return std::nullopt;
  }
  return outcome;
}

}  // namespace

std::optional<Outcome> ReadNewOutcome(ResultFile& file) {
  const auto cancelled = ReadCancelled<double>(Load(file), file);
  if (!cancelled) {
    return std::nullopt;
  }
  if (*cancelled == kCancelled) {
    file.Because(Reason::Cancelled);
    file.Delete();
    return std::nullopt;
  }
  // Kept: loaded a second time, into a second document.
  const ResultDocumentReader document = Load(file);
  if (const auto error = document.Error(); error.code != 0) {
    file.Because(error.refusal, error.code);
    ShowParseError(error);
    return std::nullopt;
  }
  Outcome outcome;
  document.Read(u"Status", outcome.status);
  document.Read(u"UserDefData", outcome.userDefData);
  document.Read(u"Id", outcome.caseId);
  document.Read(u"UserName", outcome.userName);
  return outcome;
}

std::optional<Outcome> ReadExistOutcome(ResultFile& file,
                                        const util::Attempt<std::u16string>& linkedCase) {
  std::optional<ResultDocumentReader> document = Load(file);
  const auto cancelled = ReadCancelled<std::int32_t>(*document, file);
  if (!cancelled) {
    return std::nullopt;
  }
  if (*cancelled >= 0 && *cancelled <= kLastWithoutChange) {
    document.reset();
    file.Because(Reason::Unchanged);
    file.Delete();
    return std::nullopt;
  }
  Outcome outcome;
  outcome.caseId = linkedCase.OrEmpty();
  if (*cancelled == kDeletedInLink) {
    document.reset();
    outcome.status = kWithdrawn;
    return IfWanted(std::move(outcome), file, linkedCase);
  }
  document->Read(u"Status", outcome.status);
  document->Read(u"Id", outcome.caseId);
  document->Read(u"UserName", outcome.userName);
  document->Read(u"UserDefData", outcome.userDefData);
  document.reset();
  if (linkedCase.Failed() && outcome.status == kWithdrawn &&
      automation::Trim(outcome.caseId).empty()) {
    file.Because(Reason::DatabaseFailed);
    file.SetAside();
    return std::nullopt;
  }
  return outcome;
}

std::optional<Status> StatusOfNew(const Outcome& outcome) {
  const auto status = static_cast<Status>(outcome.status);
  switch (status) {
    case Status::Changed:
    case Status::Sent:
    case Status::Withdrawn:
      return status;
  }
  return std::nullopt;
}

std::optional<Status> StatusOfExisting(const Outcome& outcome) {
  const auto status = static_cast<Status>(outcome.status);
  switch (status) {
    case Status::Changed:
    case Status::Withdrawn:
      return status;
    case Status::Sent:
      break;
  }
  return std::nullopt;
}

}  // namespace exchange
