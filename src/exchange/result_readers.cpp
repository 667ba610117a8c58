#include "exchange/result_readers.h"

#include <optional>
#include <string>
#include <string_view>

#include "automation/text.h"
#include "db/case_types.h"
#include "db/connection_state.h"
#include "db/db_vilnor.h"
#include "exchange/envelope.h"
#include "exchange/result_files.h"
#include "exchange/result_outcome.h"
#include "exchange/user_def_data.h"
#include "platform/thread_state.h"
#include "util/error_trap.h"

namespace exchange {
namespace {

using automation::Decimal10;
using db::CaseType;
using util::kBVilnorIcon;
using util::UnderTrap;

// Kept: component-wide like the pending result path, though nothing reads it; a dump of the host
// shows where the thread looked for its last result.
struct OutputPath {
  std::u16string path;
};

std::u16string ResultPath(const Reading& reading) {
  platform::ThreadState<OutputPath>().path = reading.folder;
  return ExchangeFile(reading.folder, RowOf(reading.kind).resultWord, Decimal10(reading.key));
}

// Whether an outcome is in the database, where another reading may find it, or can never be.
// Missing means that entering it failed, but a later read may succeed.
enum class Entry { Done, AlreadyThere, NotThere, Impossible, Missing };

platform::Reason ReasonOf(Entry entry) {
  using platform::Reason;
  switch (entry) {
    case Entry::Done:
      break;
    case Entry::AlreadyThere:
      return Reason::AlreadyLinked;
    case Entry::NotThere:
      return Reason::NotLinked;
    case Entry::Impossible:
      return Reason::CannotBeEntered;
    case Entry::Missing:
      return Reason::DatabaseFailed;
  }
  return Reason::Entered;
}

template <class T>
Entry EntryBy(const util::Attempt<T>& attempt) {
  return attempt.Failed() ? Entry::Missing : Entry::Done;
}

Entry EntryBy(const db::UpdateAttempt& attempt) {
  return attempt.isFinal ? Entry::Impossible : EntryBy(attempt.update);
}

// Enters an outcome into the database, notifies the host, and removes the result file. A database
// operation shows its own failure and the rest goes on; if a later read could enter the result, the
// file is set aside, so that it is not lost.
template <class Enter>
void EnterResult(ResultFile& file, const Reading& reading, Enter enter) {
  Entry entry{};
  {
    const db::GDBUse database;
    entry = enter(*db::GDB());
    if (reading.events != nullptr) {
      reading.events->UpdateJournal();
    }
  }
  file.Because(ReasonOf(entry));
  if (entry == Entry::Missing) {
    file.SetAside();
  } else {
    file.Delete();
  }
}

// The two regions of a reader: a failure in the first is reported under the XML procedure name, one
// in the second under the reader's own. `act` runs only if the first yields an outcome.
template <class ReadXml, class Act>
void RunReader(RequestKind kind, ReadXml readXml, Act act) {
  const RequestKindRow row = RowOf(kind);
  if (const auto outcome = UnderTrap(row.xmlProcedure, kBVilnorIcon, readXml)) {
    UnderTrap(row.procedure, kBVilnorIcon, [&] { act(*outcome); });
  }
}

// `key` is the application's id or, for a case, the patient's. Kept: a case takes its patient from
// the message, not from the text.
NewFHPData SplitUserDefData(CaseType type, std::int32_t key, std::u16string_view text) {
  switch (type) {
    case CaseType::PriorApproval:
      return SplitNewFHPData(text);
    case CaseType::OrdinaryCase: {
      const NewCaseData data = SplitNewCaseData(text);
      return {.pid = key, .bid = data.bid, .rid = data.rid, .kestraCaseId = {}};
    }
  }
  return {};
}

// Whether the link exists.
util::Attempt<bool> Exists(db::DBVilnor& database, CaseType type, std::int32_t key,
                           const std::u16string& caseId) {
  switch (type) {
    case CaseType::PriorApproval:
      return database.TryCaseExists(key, Number(type));
    case CaseType::OrdinaryCase:
      return database.TryCaseExistsPID(key, Number(type), caseId);
  }
  return util::Attempt(false);
}

// Kept: a failed existence test counts as "not there", so that a sent case is added.
Entry AddUnlessThere(db::DBVilnor& database, const db::NewLink& link,
                     const util::Attempt<bool>& exists) {
  if (exists.OrEmpty()) {
    return Entry::AlreadyThere;
  }
  const Entry added = EntryBy(database.TryAddNewCase(link));
  return exists.Failed() ? Entry::Missing : added;
}

Entry EnterNew(db::DBVilnor& database, CaseType type, std::int32_t key, Status status,
               const Outcome& outcome, const NewFHPData& data) {
  const auto exists = [&] { return Exists(database, type, key, outcome.caseId); };
  switch (status) {
    case Status::Changed:
      return EntryBy(database.TryUpdateCase(outcome.caseId, key, outcome.status, Number(type)));
    case Status::Sent:
      return AddUnlessThere(database,
                            {.pid = data.pid,
                             .bid = data.bid,
                             .rid = data.rid,
                             .caseId = outcome.caseId,
                             // Kept: an ordinary case has no application; the patient's id takes
                             // its place.
                             .fhpId = key,
                             .caseType = Number(type),
                             .status = outcome.status,
                             .vilnorUser = outcome.userName,
                             .kestraCaseId = data.kestraCaseId},
                            exists());
    case Status::Withdrawn: {
      const auto isThere = exists();
      if (isThere.OrEmpty()) {
        return EntryBy(database.TryDeleteCase(outcome.caseId));
      }
      return isThere.Failed() ? Entry::Missing : Entry::NotThere;
    }
  }
  return Entry::Done;
}

Entry EnterExistCase(db::DBVilnor& database, std::int32_t vilnorId, Status status,
                     const Outcome& outcome) {
  switch (status) {
    case Status::Changed:
      return EntryBy(database.TryUpdateCaseById(vilnorId, outcome.caseId, outcome.status));
    case Status::Withdrawn:
      return EntryBy(database.TryDeleteCase(outcome.caseId));
    case Status::Sent:
      break;
  }
  return Entry::Done;
}

}  // namespace

void ReadResult(const Reading& reading) {
  RowOf(reading.kind).read(reading);
}

void ReadNewResult(const Reading& reading) {
  const CaseType type = RowOf(reading.kind).caseType.value();
  std::optional<ResultFile> file;
  NewFHPData data;
  RunReader(
      reading.kind,
      [&] {
        const RequestKindRow row = RowOf(reading.kind);
        file.emplace(ResultPath(reading), row.procedure, row.traced);
        auto outcome = ReadNewOutcome(*file);
        if (outcome) {
          data = SplitUserDefData(type, reading.key, outcome->userDefData);
        }
        return outcome;
      },
      [&](const Outcome& outcome) {
        if (const auto status = StatusOfNew(outcome)) {
          EnterResult(*file, reading, [&](auto& database) {
            return EnterNew(database, type, reading.key, *status, outcome, data);
          });
        } else {
          file->Because(platform::Reason::UnknownStatus);
        }
      });
}

void ReadExistResult(const Reading& reading) {
  std::optional<ResultFile> file;
  RunReader(
      reading.kind,
      [&] {
        const RequestKindRow row = RowOf(reading.kind);
        file.emplace(ResultPath(reading), row.procedure, row.traced);
        return ReadExistOutcome(
            *file, db::WithGDB([&](auto& gDB) { return gDB.TryGetCaseIdByVilnorId(reading.key); }));
      },
      [&](const Outcome& outcome) {
        if (const auto status = StatusOfExisting(outcome)) {
          EnterResult(*file, reading, [&](auto& database) {
            return EnterExistCase(database, reading.key, *status, outcome);
          });
        } else {
          file->Because(platform::Reason::UnknownStatus);
        }
      });
}

}  // namespace exchange
