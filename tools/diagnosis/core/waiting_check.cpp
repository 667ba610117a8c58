// Results that nobody has read and requests left behind, by kind and age.
#include <algorithm>
#include <cstdint>
#include <map>

#include "automation/text.h"
#include "diagnosis/core/checks.h"
#include "diagnosis/core/exchange_files.h"
#include "diagnosis/core/parts.h"

namespace diagnosis {
namespace {

using automation::Decimal10;

constexpr std::int64_t kHour = 60;
constexpr std::int64_t kDay = 24 * kHour;
// In minutes. The host reads a result within seconds; a user may keep Vilnor Link open on a request
// for a working day.
constexpr std::int64_t kUsualWaitForReading = 10;
constexpr std::int64_t kUsualWaitForAnswer = 12 * kHour;

std::u16string Counted(std::int64_t count, std::u16string_view one, std::u16string_view several) {
  return Decimal10(count) + u" " + std::u16string(count == 1 ? one : several);
}

std::u16string AgeText(std::int64_t minutes) {
  if (minutes >= kDay) {
    return Counted(minutes / kDay, u"dag", u"dagar");
  }
  return minutes >= kHour ? Counted(minutes / kHour, u"timme", u"timmar")
                          : Counted(minutes, u"minut", u"minuter");
}

struct Group {
  ExchangeFile file;
  std::int64_t count = 0;
  std::int64_t oldest = 0;
};

// By kind and subject, in the order of the kinds.
using Groups = std::map<std::pair<FileKind, std::u16string_view>, Group>;

Groups GroupsOf(const std::vector<FolderEntry>& entries) {
  Groups groups;
  for (const FolderEntry& entry : entries) {
    if (const auto file = ExchangeFileOf(entry.name)) {
      Group& group = groups[{file->kind, file->subject}];
      group.file = *file;
      ++group.count;
      group.oldest = std::max(group.oldest, entry.ageInMinutes);
    }
  }
  return groups;
}

std::u16string_view NoteOn(FileKind kind) {
  switch (kind) {
    case FileKind::SetAsideResult:
      return u"undanlagt, ";
    case FileKind::EnteredResult:
      return u"redan infört, ";
    default:
      return {};
  }
}

// "2 nya ärenden (äldst: 3 dagar)".
std::u16string TextOf(const Group& group) {
  return Counted(group.count, group.file.subject, group.file.subjects) + u" (" +
         std::u16string(NoteOn(group.file.kind)) + (group.count == 1 ? u"" : u"äldst: ") +
         AgeText(group.oldest) + u")";
}

bool IsResult(FileKind kind) {
  return kind == FileKind::Result || kind == FileKind::SetAsideResult ||
         kind == FileKind::EnteredResult;
}

bool IsOverdue(const Group& group) {
  switch (group.file.kind) {
    case FileKind::Result:
    case FileKind::UnfinishedRequest:
      return group.oldest > kUsualWaitForReading;
    case FileKind::Request:
    case FileKind::Search:
      return group.oldest > kUsualWaitForAnswer;
    default:
      return true;
  }
}

// A line on the groups that `belongs` chooses.
template <class Belongs>
Finding LineOn(const Groups& groups, Belongs belongs, const Finding& overdue,
               const std::u16string& none) {
  std::u16string list;
  State state = State::Fine;
  for (const auto& [key, group] : groups) {
    if (belongs(key.first)) {
      list += (list.empty() ? u"" : u", ") + TextOf(group);
      state = IsOverdue(group) ? overdue.state : state;
    }
  }
  if (list.empty()) {
    return {overdue.check, State::Fine, none, {}};
  }
  const bool fine = state == State::Fine;
  return {overdue.check, state, (fine ? std::u16string(u"Väntar: ") : overdue.text) + list + u".",
          fine ? std::u16string() : overdue.advice};
}

}  // namespace

void ExamineWaitingFiles(Surroundings surroundings, const std::u16string& folder,
                         Findings& findings) {
  const Groups groups = GroupsOf(surroundings.computer.FilesIn(folder));
  findings.push_back(LineOn(
      groups, IsResult,
      {checks::kUnreadResults, State::Warning, u"Resultat som inte är lästa: ",
       u"Ta inte bort dem: svaren finns bara där. Se till att Kestra Dental är igång när Vilnor "
       u"Link stängs. Leverantören av Kestra Dental kan läsa in resultat som väntar; undanlagda "
       u"måste först få tillbaka sitt namn. Filer som är redan införda kan tas bort."},
      u"Inga resultat väntar."));
  findings.push_back(LineOn(
      groups, [](FileKind kind) { return !IsResult(kind); },
      {checks::kLeftRequests, State::Warning, u"Begäranden som ligger kvar: ",
       u"Stäng Vilnor Link och gör begäran på nytt i Kestra Dental. Filer som ändå ligger kvar kan "
       u"tas bort: inget svar är att vänta på dem."},
      u"Inga begäranden ligger kvar."));
}

}  // namespace diagnosis
