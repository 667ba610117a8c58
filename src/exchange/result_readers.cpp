#include "exchange/result_readers.h"

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <utility>

#include "automation/text.h"
#include "db/connection_state.h"
#include "db/db_vilnor.h"
#include "exchange/envelope.h"
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

// Case types of the link records.
constexpr std::int32_t kPriorApproval = 1;
constexpr std::int32_t kOrdinaryCase = 9;

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

// The outcome of a new case or application; nothing when there is none to act on.
std::optional<Outcome> ReadNewResult(const std::u16string& path) {
  {
    const ResultDocumentReader document(path);
    if (document.Error().code != 0) {
      return std::nullopt;
    }
    double cancelled = kNotCancelled;
    document.Read(u"Cancelled", cancelled);
    if (cancelled == kCancelled) {
      DeleteResult(path);
      return std::nullopt;
    }
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

// `linkedCaseId` is the case that the link record names.
std::optional<Outcome> ReadExistResult(const std::u16string& path, std::u16string linkedCaseId) {
  Outcome outcome;
  outcome.caseId = std::move(linkedCaseId);
  std::int32_t cancelled = kNotCancelled;
  std::optional<ResultDocumentReader> document(path);
  if (document->Error().code != 0) {
    return std::nullopt;
  }
  document->Read(u"Cancelled", cancelled);
  if (cancelled >= 0 && cancelled <= kLastWithoutChange) {
    document.reset();
    DeleteResult(path);
    return std::nullopt;
  }
  if (cancelled == kDeletedInLink) {
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
  document->Read(u"Id", outcome.caseId);
  document->Read(u"UserName", outcome.userName);
  document->Read(u"UserDefData", outcome.userDefData);
  return outcome;
}

// Enters an outcome into the database, tells the host, deletes the result file. A database
// operation shows its own failure and returns as if empty; the file then stays, so that the result
// is not lost.
template <class Enter>
void EnterResult(const std::u16string& path, ResultReaderHost& host, Enter enter) {
  const std::uint32_t errorsBefore = util::ErrorsShown();
  enter(*db::RenewGDB());
  const bool entered = util::ErrorsShown() == errorsBefore;
  host.RaiseUpdateJournal();
  db::ReleaseGDB();
  if (entered) {
    DeleteResult(path);
  }
}

// Runs an existence test and says whether its answer can be relied on and is `wanted`.
template <class Test>
bool Confirmed(bool wanted, Test test) {
  const std::uint32_t errorsBefore = util::ErrorsShown();
  return test() == wanted && util::ErrorsShown() == errorsBefore;
}

void EnterNewFHP(db::DBVilnor& database, std::int32_t fhpId, const Outcome& outcome,
                 const NewFHPData& data) {
  const auto exists = [&] { return database.CaseExists(fhpId, kPriorApproval); };
  if (outcome.status == kChanged) {
    database.UpdateCase(outcome.caseId, fhpId, outcome.status, kPriorApproval);
  } else if (outcome.status == kSent && Confirmed(false, exists)) {
    database.AddNewCase(data.pid, data.bid, data.rid, outcome.caseId, fhpId, kPriorApproval,
                        outcome.status, outcome.userName, data.kestraCaseId);
  } else if (outcome.status == kWithdrawn && Confirmed(true, exists)) {
    database.DeleteCase(outcome.caseId);
  }
}

void EnterNewCase(db::DBVilnor& database, std::int32_t pid, const Outcome& outcome,
                  const NewCaseData& data) {
  const auto exists = [&] { return database.CaseExistsPID(pid, kOrdinaryCase, outcome.caseId); };
  if (outcome.status == kChanged) {
    database.UpdateCase(outcome.caseId, pid, outcome.status, kOrdinaryCase);
  } else if (outcome.status == kSent && Confirmed(false, exists)) {
    // Kept: an ordinary case has no application, the patient's id stands in its place.
    database.AddNewCase(pid, data.bid, data.rid, outcome.caseId, pid, kOrdinaryCase, outcome.status,
                        outcome.userName, {});
  } else if (outcome.status == kWithdrawn && Confirmed(true, exists)) {
    database.DeleteCase(outcome.caseId);
  }
}

void EnterExistCase(db::DBVilnor& database, std::int32_t vilnorId, const Outcome& outcome) {
  if (outcome.status == kChanged) {
    database.UpdateCaseById(vilnorId, outcome.caseId, outcome.status);
  } else {
    database.DeleteCase(outcome.caseId);
  }
}

bool IsOneOf(std::int32_t status, std::initializer_list<std::int32_t> acting) {
  return std::find(acting.begin(), acting.end(), status) != acting.end();
}

std::u16string LinkedCaseId(std::int32_t vilnorId) {
  std::u16string caseId = db::RenewGDB()->GetCaseIdByVilnorId(vilnorId);
  db::ReleaseGDB();
  return caseId;
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

}  // namespace

void ReadNewFHP(std::int32_t fhpId, ResultReaderHost& host) {
  std::u16string path;
  NewFHPData data;
  RunReader(
      u" in XMLReadNewFHP", u" in ReadNewFHP",
      [&] {
        path = ResultFile(host, u"\\OutNewFHP", fhpId);
        auto outcome = ReadNewResult(path);
        if (outcome) {
          data = SplitNewFHPData(outcome->userDefData);
        }
        return outcome;
      },
      [&](const Outcome& outcome) {
        if (IsOneOf(outcome.status, {kChanged, kSent, kWithdrawn})) {
          EnterResult(path, host,
                      [&](auto& database) { EnterNewFHP(database, fhpId, outcome, data); });
        }
      });
}

void ReadNewCase(std::int32_t pid, ResultReaderHost& host) {
  std::u16string path;
  NewCaseData data;
  RunReader(
      u" in XMLReadNewCase", u" in ReadNewCase",
      [&] {
        path = ResultFile(host, u"\\OutNewCase", pid);
        auto outcome = ReadNewResult(path);
        if (outcome) {
          data = SplitNewCaseData(outcome->userDefData);
        }
        return outcome;
      },
      [&](const Outcome& outcome) {
        if (IsOneOf(outcome.status, {kChanged, kSent, kWithdrawn})) {
          EnterResult(path, host,
                      [&](auto& database) { EnterNewCase(database, pid, outcome, data); });
        }
      });
}

void ReadExistCase(std::int32_t vilnorId, ResultReaderHost& host) {
  std::u16string path;
  RunReader(
      u" in XMLReadExistCase", u" in ReadExistCase",
      [&]() -> std::optional<Outcome> {
        path = ResultFile(host, u"\\OutExistCase", vilnorId);
        const std::uint32_t errorsBefore = util::ErrorsShown();
        std::u16string caseId = LinkedCaseId(vilnorId);
        if (util::ErrorsShown() != errorsBefore) {
          return std::nullopt;  // told; without the link's case the result cannot be acted on
        }
        return ReadExistResult(path, std::move(caseId));
      },
      [&](const Outcome& outcome) {
        if (IsOneOf(outcome.status, {kChanged, kWithdrawn})) {
          EnterResult(path, host,
                      [&](auto& database) { EnterExistCase(database, vilnorId, outcome); });
        }
      });
}

}  // namespace exchange
