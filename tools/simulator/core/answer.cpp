#include "simulator/core/answer.h"

#include <algorithm>
#include <array>
#include <string>

#include "automation/date.h"
#include "automation/text.h"
#include "simulator/core/latin1_xml.h"
#include "simulator/core/problem.h"

namespace simulator {
namespace {

// What an outcome writes; nullptr omits the element. For an existing case the component looks at
// Cancelled first: 0 to 2 end the matter and 3 means deleted, so it acts on Status only if there is
// no Cancelled.
struct OutcomeRow {
  Outcome outcome;
  const char16_t* word;
  const char16_t* status;
  const char16_t* cancelledNew;
  const char16_t* cancelledExisting;
};

constexpr std::array<OutcomeRow, 7> kOutcomes = {{
    {Outcome::Sent, u"sent", u"5", u"0", nullptr},
    {Outcome::Changed, u"changed", u"1", u"0", nullptr},
    {Outcome::Withdrawn, u"withdrawn", u"7", u"0", nullptr},
    {Outcome::Cancelled, u"cancelled", u"0", u"1", u"1"},
    {Outcome::Deleted, u"deleted", u"0", nullptr, u"3"},
    {Outcome::Unreadable, u"unreadable", u"5", u"0", nullptr},
    {Outcome::None, u"none", nullptr, nullptr, nullptr},
}};

const OutcomeRow& RowOf(Outcome outcome) {
  return kOutcomes.at(static_cast<std::size_t>(outcome));
}

void AppendCode(std::string& bytes, const char* name, const std::optional<std::u16string>& instead,
                const char16_t* code) {
  if (instead && !instead->empty()) {
    AppendElement(bytes, name, *instead);
  } else if (!instead && code != nullptr) {
    AppendElement(bytes, name, code);
  }
}

}  // namespace

std::optional<Outcome> OutcomeOfWord(std::u16string_view word) {
  const auto* const row = std::find_if(kOutcomes.begin(), kOutcomes.end(), [&](const auto& each) {
    return automation::EqualsNoCase(each.word, word);
  });
  return row == kOutcomes.end() ? std::nullopt : std::optional(row->outcome);
}

std::u16string OutcomeWords() {
  std::u16string words;
  for (const auto& row : kOutcomes) {
    words += words.empty() ? u"" : u", ";
    words += row.word;
  }
  return words;
}

bool IsPossible(Outcome outcome, RequestKind kind) {
  if (kind == RequestKind::Search) {
    return outcome == Outcome::None;
  }
  return outcome != Outcome::Deleted || kind == RequestKind::ExistingCase;
}

std::u16string DefaultCaseId(const Request& request, automation::Date now) {
  // Digits only: the component writes a changed case's identifier into SQL unquoted.
  return request.caseId.empty()
             ? automation::FormatDate(now, u"yymmdd") +
                   automation::ReplaceNoCase(automation::FormatTime(now), u":", u"")
             : request.caseId;
}

std::u16string DefaultUserName(const Request& request) {
  return request.participant.empty() ? u"simulator" : request.participant;
}

std::string ResultFileBytes(const Request& request, const Answer& answer) {
  const auto& row = RowOf(answer.outcome);
  const bool existing = request.kind == RequestKind::ExistingCase;
  std::string bytes =
      "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n"
      "<Envelope LIFFVersion=\"2.0\">\r\n<CaseResult>\r\n";
  AppendCode(bytes, "Cancelled", answer.cancelled,
             existing ? row.cancelledExisting : row.cancelledNew);
  AppendCode(bytes, "Status", answer.status, row.status);
  AppendElement(bytes, "Id", answer.caseId);
  AppendElement(bytes, "UserName", answer.userName);
  AppendElement(bytes, "UserDefData", request.userDefData);
  if (answer.outcome == Outcome::Unreadable) {
    return bytes;  // the end is missing
  }
  return bytes + "</CaseResult>\r\n</Envelope>\r\n";
}

}  // namespace simulator
