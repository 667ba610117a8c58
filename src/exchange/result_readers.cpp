#include "exchange/result_readers.h"

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "automation/text.h"
#include "db/case_types.h"
#include "db/connection_state.h"
#include "db/db_vilnor.h"
#include "exchange/envelope.h"
#include "exchange/linked_case.h"
#include "exchange/result_document_reader.h"
#include "exchange/user_def_data.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "util/guarded.h"
#include "util/thread_state.h"

namespace exchange {
namespace {

using automation::Decimal10;
using util::Guarded;
using util::kBVilnorIcon;

// What the link program reports; every other status leaves everything as it is.
enum Status : std::int32_t { kChanged = 1, kSent = 5, kWithdrawn = 7 };

// Values of Cancelled. A result without the element counts as not cancelled.
constexpr std::int32_t kNotCancelled = 99;
constexpr std::int32_t kCancelled = 1;
constexpr std::int32_t kLastWithoutChange = 2;
constexpr std::int32_t kDeletedInLink = 3;

struct Outcome {
  std::int32_t status = 0;
  std::u16string caseId;
  std::u16string userName;
  std::u16string userDefData;
};

// Kept: component-wide like the pending result path, though nothing reads it back; a dump of the
// host shows where the thread looked for its last result.
struct OutputPath {
  std::u16string path;
};

// The result file of a key; the exchange directory is looked up afresh for each result.
std::u16string ResultFile(ResultReaderHost& host, std::u16string_view word, std::int32_t key) {
  std::u16string& outputPath = util::ThreadState<OutputPath>().path;
  outputPath = host.GetVilnorOutputPath();
  return ExchangeFile(outputPath, word, Decimal10(key));
}

void DeleteResult(const std::u16string& path) {
  platform::Current().files.DeleteFile(path);
}

void ShowParseError(const platform::ParseError& error) {
  platform::Current().dialogs.Show({.text = u"XMLDOM Error " + Decimal10(error.code) + u"\r\nPos " +
                                            Decimal10(error.filePosition) + u"Reason " +
                                            error.reason,
                                    .title = {}});
}

// The value of Cancelled; nothing when the file cannot be loaded.
template <class Number>
std::optional<Number> ReadCancelled(const ResultDocumentReader& document) {
  if (document.Error().code != 0) {
    return std::nullopt;
  }
  Number cancelled = kNotCancelled;
  document.Read(u"Cancelled", cancelled);
  return cancelled;
}

// The outcome of a new case or application; nothing when there is none to act on.
std::optional<Outcome> ReadNewOutcome(const std::u16string& path) {
  const auto cancelled = ReadCancelled<double>(ResultDocumentReader(path));
  if (!cancelled) {
    return std::nullopt;
  }
  if (*cancelled == kCancelled) {
    DeleteResult(path);
    return std::nullopt;
  }
  // Kept: loaded a second time, by a document of its own.
  const ResultDocumentReader document(path);
  if (const auto error = document.Error(); error.code != 0) {
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

bool UserWantsLinkDeleted() {
  return platform::Current().dialogs.Show({.text = u"Ärendet är borttaget i Vilnor Link\r\n\r\n"
                                                   u"Ta bort kopplingen till ärendet i Kestra?",
                                           .title = u"Kestra Dental koppling till Vilnor Link",
                                           .icon = platform::Icon::Question,
                                           .buttons = platform::Buttons::YesNo}) ==
         platform::Answer::Yes;
}

// `linkedCaseId` is the case that the link record names; nothing when the lookup failed, which the
// user has been told. An outcome that would need it is then left alone.
std::optional<Outcome> ReadExistOutcome(const std::u16string& path,
                                        const std::optional<std::u16string>& linkedCaseId) {
  Outcome outcome;
  outcome.caseId = linkedCaseId.value_or(std::u16string());
  std::optional<ResultDocumentReader> document(path);
  const auto cancelled = ReadCancelled<std::int32_t>(*document);
  if (!cancelled) {
    return std::nullopt;
  }
  if (*cancelled >= 0 && *cancelled <= kLastWithoutChange) {
    document.reset();
    DeleteResult(path);
    return std::nullopt;
  }
  if (*cancelled == kDeletedInLink) {
    if (!linkedCaseId) {
      return std::nullopt;
    }
    const bool wanted = UserWantsLinkDeleted();
    document.reset();
    if (!wanted) {
      DeleteResult(path);
      return std::nullopt;
    }
    outcome.status = kWithdrawn;
    return outcome;
  }
  document->Read(u"Status", outcome.status);
  const bool hasId = document->Read(u"Id", outcome.caseId);
  document->Read(u"UserName", outcome.userName);
  document->Read(u"UserDefData", outcome.userDefData);
  if (!hasId && !linkedCaseId) {
    return std::nullopt;
  }
  return outcome;
}

// Enters an outcome into the database, tells the host, deletes the result file. A database
// operation shows its own failure and returns as if empty; the file then stays, so that the result
// is not lost. So it does when one has failed before (`lookedUp` false).
template <class Enter>
void EnterResult(const std::u16string& path, ResultReaderHost& host, bool lookedUp, Enter enter) {
  const std::uint32_t errorsBefore = util::ErrorsShown();
  enter(*db::RenewGDB());
  const bool entered = util::ErrorsShown() == errorsBefore;
  host.RaiseUpdateJournal();
  db::ReleaseGDB();
  if (lookedUp && entered) {
    DeleteResult(path);
  }
}

// Runs an existence test and says whether its answer can be relied on and is `wanted`.
template <class Test>
bool Confirmed(bool wanted, Test test) {
  const std::uint32_t errorsBefore = util::ErrorsShown();
  return test() == wanted && util::ErrorsShown() == errorsBefore;
}

bool IsOneOf(std::int32_t status, std::initializer_list<std::int32_t> acting) {
  return std::find(acting.begin(), acting.end(), status) != acting.end();
}

// The two regions of a reader: what fails in the first is reported with the XML name, what fails
// in the second with the reader's own; `act` runs only when the first yields an outcome.
template <class ReadXml, class Act>
void RunReader(std::u16string_view xmlPlace, std::u16string_view place, ReadXml readXml, Act act) {
  if (const auto outcome = Guarded(xmlPlace, kBVilnorIcon, readXml)) {
    Guarded(
        place, kBVilnorIcon, [&] { act(*outcome); }, db::ReleaseGDB);
  }
}

// What differs between the results of a new application and of a new case.
struct NewKind {
  std::int32_t caseType;
  std::u16string_view fileWord;
  std::u16string_view xmlPlace;
  std::u16string_view place;
};

constexpr NewKind kNewFHP = {db::kPriorApproval, u"\\OutNewFHP", u" in XMLReadNewFHP",
                             u" in ReadNewFHP"};
constexpr NewKind kNewCase = {db::kOrdinaryCase, u"\\OutNewCase", u" in XMLReadNewCase",
                              u" in ReadNewCase"};

// `key` is the application's id or, for a case, the patient's. Kept: a case takes its patient from
// the message and not from the text.
NewFHPData SplitUserDefData(const NewKind& kind, std::int32_t key, std::u16string_view text) {
  if (kind.caseType == db::kPriorApproval) {
    return SplitNewFHPData(text);
  }
  const NewCaseData data = SplitNewCaseData(text);
  return {.pid = key, .bid = data.bid, .rid = data.rid, .kestraCaseId = {}};
}

void EnterNew(db::DBVilnor& database, const NewKind& kind, std::int32_t key, const Outcome& outcome,
              const NewFHPData& data) {
  const auto exists = [&] {
    return kind.caseType == db::kPriorApproval
               ? database.CaseExists(key, kind.caseType)
               : database.CaseExistsPID(key, kind.caseType, outcome.caseId);
  };
  if (outcome.status == kChanged) {
    database.UpdateCase(outcome.caseId, key, outcome.status, kind.caseType);
  } else if (outcome.status == kSent && Confirmed(false, exists)) {
    // Kept: an ordinary case has no application, the patient's id stands in its place.
    database.AddNewCase(data.pid, data.bid, data.rid, outcome.caseId, key, kind.caseType,
                        outcome.status, outcome.userName, data.kestraCaseId);
  } else if (outcome.status == kWithdrawn && Confirmed(true, exists)) {
    database.DeleteCase(outcome.caseId);
  }
}

void ReadNew(const NewKind& kind, std::int32_t key, ResultReaderHost& host) {
  std::u16string path;
  NewFHPData data;
  RunReader(
      kind.xmlPlace, kind.place,
      [&] {
        path = ResultFile(host, kind.fileWord, key);
        auto outcome = ReadNewOutcome(path);
        if (outcome) {
          data = SplitUserDefData(kind, key, outcome->userDefData);
        }
        return outcome;
      },
      [&](const Outcome& outcome) {
        if (IsOneOf(outcome.status, {kChanged, kSent, kWithdrawn})) {
          EnterResult(path, host, true,
                      [&](auto& database) { EnterNew(database, kind, key, outcome, data); });
        }
      });
}

void EnterExistCase(db::DBVilnor& database, std::int32_t vilnorId, const Outcome& outcome) {
  if (outcome.status == kChanged) {
    database.UpdateCaseById(vilnorId, outcome.caseId, outcome.status);
  } else if (outcome.status == kWithdrawn) {
    database.DeleteCase(outcome.caseId);
  }
}

// The case of the link record; nothing when the lookup failed.
std::optional<std::u16string> LookUpLinkedCase(std::int32_t vilnorId) {
  const std::uint32_t errorsBefore = util::ErrorsShown();
  std::u16string caseId = LinkedCaseId(vilnorId);
  return util::ErrorsShown() == errorsBefore ? std::optional(std::move(caseId)) : std::nullopt;
}

}  // namespace

void ReadNewFHP(std::int32_t fhpId, ResultReaderHost& host) {
  ReadNew(kNewFHP, fhpId, host);
}

void ReadNewCase(std::int32_t pid, ResultReaderHost& host) {
  ReadNew(kNewCase, pid, host);
}

void ReadExistCase(std::int32_t vilnorId, ResultReaderHost& host) {
  std::u16string path;
  std::optional<std::u16string> linkedCaseId;
  RunReader(
      u" in XMLReadExistCase", u" in ReadExistCase",
      [&] {
        path = ResultFile(host, u"\\OutExistCase", vilnorId);
        linkedCaseId = LookUpLinkedCase(vilnorId);
        return ReadExistOutcome(path, linkedCaseId);
      },
      [&](const Outcome& outcome) {
        if (IsOneOf(outcome.status, {kChanged, kWithdrawn})) {
          EnterResult(path, host, linkedCaseId.has_value(),
                      [&](auto& database) { EnterExistCase(database, vilnorId, outcome); });
        }
      });
}

}  // namespace exchange
