#include "exchange/result_readers.h"

#include <optional>
#include <string>
#include <string_view>

#include "automation/text.h"
#include "db/case_types.h"
#include "db/connection_state.h"
#include "db/db_vilnor.h"
#include "exchange/envelope.h"
#include "exchange/linked_case.h"
#include "exchange/result_files.h"
#include "exchange/result_outcome.h"
#include "exchange/user_def_data.h"
#include "platform/thread_state.h"
#include "util/error_trap.h"

namespace exchange {
namespace {

using automation::Decimal10;
using util::kBVilnorIcon;
using util::UnderTrap;

// Kept: component-wide like the pending result path, though nothing reads it back; a dump of the
// host shows where the thread looked for its last result.
struct OutputPath {
  std::u16string path;
};

// The result file of a key; the exchange directory is looked up afresh for each result.
std::u16string ResultPath(ResultReaderHost& host, std::u16string_view word, std::int32_t key) {
  std::u16string& outputPath = platform::ThreadState<OutputPath>().path;
  outputPath = host.GetVilnorOutputPath();
  return ExchangeFile(outputPath, word, Decimal10(key));
}

// What became of an outcome in the database: there, or not there because of a failure that another
// reading may not meet.
enum class Entry { Done, Missing };

template <class T>
Entry EntryBy(const util::Attempt<T>& attempt) {
  return attempt.Failed() ? Entry::Missing : Entry::Done;
}

// An update that another reading could only fail again in is done with.
Entry EntryBy(const db::UpdateAttempt& attempt) {
  return attempt.isFinal ? Entry::Done : EntryBy(attempt.update);
}

// Enters an outcome into the database, tells the host, and takes the result file out of the way. A
// database operation shows its own failure and the rest goes on; what another reading could enter
// is then set aside, so that it is not lost.
template <class Enter>
void EnterResult(const ResultFile& file, ResultReaderHost& host, Enter enter) {
  Entry entry{};
  {
    const db::GDBUse database;
    entry = enter(*db::GDB());
    host.RaiseUpdateJournal();
  }
  switch (entry) {
    case Entry::Done:
      file.Delete();
      break;
    case Entry::Missing:
      file.SetAside();
      break;
  }
}

// The two regions of a reader: what fails in the first is reported with the XML name, what fails
// in the second with the reader's own; `act` runs only when the first yields an outcome.
template <class ReadXml, class Act>
void RunReader(std::u16string_view xmlPlace, std::u16string_view place, ReadXml readXml, Act act) {
  if (const auto outcome = UnderTrap(xmlPlace, kBVilnorIcon, readXml)) {
    UnderTrap(place, kBVilnorIcon, [&] { act(*outcome); });
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

util::Attempt<bool> Exists(db::DBVilnor& database, const NewKind& kind, std::int32_t key,
                           const std::u16string& caseId) {
  return kind.caseType == db::kPriorApproval
             ? database.TryCaseExists(key, kind.caseType)
             : database.TryCaseExistsPID(key, kind.caseType, caseId);
}

// Kept: an existence test that failed counts as "not there", so that a case that was sent is added.
Entry EnterNew(db::DBVilnor& database, const NewKind& kind, std::int32_t key,
               const Outcome& outcome, const NewFHPData& data) {
  if (outcome.status == kChanged) {
    return EntryBy(database.TryUpdateCase(outcome.caseId, key, outcome.status, kind.caseType));
  }
  const auto exists = Exists(database, kind, key, outcome.caseId);
  if (outcome.status == kSent && !exists.OrEmpty()) {
    // Kept: an ordinary case has no application, the patient's id stands in its place.
    const auto added =
        database.TryAddNewCase(data.pid, data.bid, data.rid, outcome.caseId, key, kind.caseType,
                               outcome.status, outcome.userName, data.kestraCaseId);
    return exists.Failed() ? Entry::Missing : EntryBy(added);
  }
  if (outcome.status == kWithdrawn && exists.OrEmpty()) {
    return EntryBy(database.TryDeleteCase(outcome.caseId));
  }
  return EntryBy(exists);
}

void ReadNew(const NewKind& kind, std::int32_t key, ResultReaderHost& host) {
  std::optional<ResultFile> file;
  NewFHPData data;
  RunReader(
      kind.xmlPlace, kind.place,
      [&] {
        file.emplace(ResultPath(host, kind.fileWord, key));
        auto outcome = ReadNewOutcome(*file);
        if (outcome) {
          data = SplitUserDefData(kind, key, outcome->userDefData);
        }
        return outcome;
      },
      [&](const Outcome& outcome) {
        if (ActsOnNew(outcome.status)) {
          EnterResult(*file, host,
                      [&](auto& database) { return EnterNew(database, kind, key, outcome, data); });
        }
      });
}

Entry EnterExistCase(db::DBVilnor& database, std::int32_t vilnorId, const Outcome& outcome) {
  return outcome.status == kChanged
             ? EntryBy(database.TryUpdateCaseById(vilnorId, outcome.caseId, outcome.status))
             : EntryBy(database.TryDeleteCase(outcome.caseId));
}

}  // namespace

void ReadNewFHP(std::int32_t fhpId, ResultReaderHost& host) {
  ReadNew(kNewFHP, fhpId, host);
}

void ReadNewCase(std::int32_t pid, ResultReaderHost& host) {
  ReadNew(kNewCase, pid, host);
}

void ReadExistCase(std::int32_t vilnorId, ResultReaderHost& host) {
  std::optional<ResultFile> file;
  RunReader(
      u" in XMLReadExistCase", u" in ReadExistCase",
      [&] {
        file.emplace(ResultPath(host, u"\\OutExistCase", vilnorId));
        return ReadExistOutcome(*file, LinkedCaseId(vilnorId));
      },
      [&](const Outcome& outcome) {
        if (ActsOnExisting(outcome.status)) {
          EnterResult(*file, host,
                      [&](auto& database) { return EnterExistCase(database, vilnorId, outcome); });
        }
      });
}

}  // namespace exchange
