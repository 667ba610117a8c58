// DBVilnor's link records, the table Vilnor: finding, deleting and updating them.
#include "automation/automation_error.h"
#include "automation/text.h"
#include "db/case_types.h"
#include "db/query.h"

namespace db {
namespace {

using automation::Decimal10;
using util::Attempt;
using util::kDBVilnorIcon;

constexpr Lookup kGetCaseIdByVilnorId = {
    u" in GetCaseIdByVilnorId", u"SELECT * FROM Vilnor WHERE VilnorId = ", u"", OpenMode::Static};
// Kept: always the link of a prior-approval application; hosts ask for no other by this key.
constexpr Lookup kGetVilnorIdByFHPId = {u" in GetVilnorIdByFHPId",
                                        u"SELECT VilnorId from Vilnor where FHP_ID = ",
                                        u" AND CaseType = 1", OpenMode::Static};

// A link's keys; 0 where there is no link.
struct LinkKeys {
  std::int32_t journalId = 0;
  std::int32_t vilnorId = 0;
};

// Kept: only the first link that the query finds is deleted, with its journal line; if there is
// none, both deletes run with 0.
void DeleteLink(const std::u16string& query) {
  const LinkKeys link = FirstRow(query, OpenMode::Static, [](auto& row) {
    LinkKeys keys;
    keys.journalId = NumberField(row, u"Journal_ID");
    keys.vilnorId = NumberField(row, u"VilnorId");
    return keys;
  });
  InTransaction([&] {
    Execute(u"Delete from Journal where id = " + Decimal10(link.journalId));
    Execute(u"Delete from Vilnor where Vilnorid = " + Decimal10(link.vilnorId));
  });
}

bool RowExists(const std::u16string& query) {
  return FirstRow(query, OpenMode::Static, [](auto& /*row*/) { return true; });
}

// One value of a query that must return a row.
// Kept: EOF is not checked first; without a row, reading raises 3021 and the recordset stays open.
template <class Take>
auto OnlyRow(const std::u16string& query, Take take) {
  platform::Recordset& row = OpenQuery(query, OpenMode::Static);
  auto taken = take(row);
  row.Close();
  return taken;
}

// Kept: only a text with a "!" before its reference can be rewritten, though AddNewCase writes
// none; any other raises error 5. The "!" is removed, too.
std::u16string WithReference(const std::u16string& journalText, const std::u16string& caseId,
                             bool& isFinal) {
  const std::int32_t mark = automation::InStr(1, journalText, u"!");
  isFinal = mark == 0;
  return automation::Left(journalText, mark - 1) + caseId;
}

// The journal line of the link to update; ADO raises 3021 if there is no link.
std::int32_t JournalIdOf(platform::Recordset& link, bool& isFinal) {
  try {
    return NumberField(link, u"Journal_ID");
  } catch (const automation::AutomationError& error) {
    constexpr std::int32_t kNoCurrentRecord = 3021;
    isFinal = error.number() == kNoCurrentRecord;
    throw;
  }
}

// The parts in which the update statements differ.
// Kept: they also differ in "SET" and "set", "PID= " and "PID = "; hosts' logs know these texts.
struct LinkUpdate {
  std::u16string journalQuery;
  std::u16string where;
  std::u16string_view journalUpdate;
};

// Kept: the case id is not quoted in the link's update, unlike in the insert.
// Kept: all of a patient's links are updated, but only the first one's journal line.
void UpdateLink(const LinkUpdate& update, const std::u16string& caseId, std::int32_t caseStatus,
                bool& isFinal) {
  const std::int32_t journalId =
      OnlyRow(update.journalQuery, [&](auto& link) { return JournalIdOf(link, isFinal); });
  const std::u16string oldText =
      OnlyRow(u"SELECT Tekst from Journal Where ID = " + Decimal10(journalId),
              [](auto& line) { return TextField(line, u"Tekst"); });
  const std::u16string newText = WithReference(oldText, caseId, isFinal);
  InTransaction([&] {
    Execute(u"Update Vilnor SET CaseId = " + caseId + u", StatusCode = " + Decimal10(caseStatus) +
            update.where);
    Execute(std::u16string(update.journalUpdate) + u"'" + newText + u"' Where ID = " +
            Decimal10(journalId));
  });
}

UpdateAttempt TryUpdate(platform::Procedure procedure, const LinkUpdate& update,
                        const std::u16string& caseId, std::int32_t caseStatus) {
  UpdateAttempt attempt;
  attempt.update =
      TryWrite(procedure, [&] { UpdateLink(update, caseId, caseStatus, attempt.isFinal); });
  return attempt;
}

}  // namespace

void DBVilnor::DeleteFHP(std::int32_t fhpId) {
  TryWrite(u" in DeleteFHP", [&] {
    DeleteLink(u"SELECT VilnorID, Journal_ID from Vilnor where FHP_ID = " + Decimal10(fhpId));
  }).OrEmpty();
}

void DBVilnor::DeleteCase(const std::u16string& caseId) {
  TryDeleteCase(caseId).OrEmpty();
}

Attempt<void> DBVilnor::TryDeleteCase(const std::u16string& caseId) {
  return TryWrite(u" in DeleteCase", [&] {
    DeleteLink(u"SELECT VilnorID, Journal_ID from Vilnor where CaseId = '" +
               automation::Trim(caseId) + u"'");
  });
}

std::u16string DBVilnor::GetCaseIdByVilnorId(std::int32_t vilnorId) {
  return TryGetCaseIdByVilnorId(vilnorId).OrEmpty();
}

Attempt<std::u16string> DBVilnor::TryGetCaseIdByVilnorId(std::int32_t vilnorId) {
  return TryLookUp(kGetCaseIdByVilnorId, vilnorId,
                   [](auto& link) { return TextField(link, u"CaseId"); });
}

bool DBVilnor::CaseExists(std::int32_t fhpId, std::int32_t caseTypeId) {
  return TryCaseExists(fhpId, caseTypeId).OrEmpty();
}

Attempt<bool> DBVilnor::TryCaseExists(std::int32_t fhpId, std::int32_t caseTypeId) {
  return util::Try(u" in CaseExists", kDBVilnorIcon, [&] {
    return RowExists(u"SELECT * FROM Vilnor WHERE FHP_ID = " + Decimal10(fhpId) +
                     u" and CaseType = " + Decimal10(caseTypeId));
  });
}

bool DBVilnor::CaseExistsPID(std::int32_t pid, std::int32_t caseTypeId,
                             const std::u16string& caseId) {
  return TryCaseExistsPID(pid, caseTypeId, caseId).OrEmpty();
}

Attempt<bool> DBVilnor::TryCaseExistsPID(std::int32_t pid, std::int32_t caseTypeId,
                                         const std::u16string& caseId) {
  return util::Try(u" in CaseExistsPID", kDBVilnorIcon, [&] {
    return RowExists(u"SELECT * FROM Vilnor WHERE PID = " + Decimal10(pid) + u" and CaseType = " +
                     Decimal10(caseTypeId) + u" and CaseId = '" + caseId + u"'");
  });
}

std::int32_t DBVilnor::GetVilnorIdByFHPId(std::int32_t fhpId) {
  return LookUp(kGetVilnorIdByFHPId, fhpId,
                [](auto& link) { return NumberField(link, u"VilnorId"); });
}

void DBVilnor::UpdateCaseById(std::int32_t vilnorId, const std::u16string& caseId,
                              std::int32_t caseStatus) {
  TryUpdateCaseById(vilnorId, caseId, caseStatus).update.OrEmpty();
}

UpdateAttempt DBVilnor::TryUpdateCaseById(std::int32_t vilnorId, const std::u16string& caseId,
                                          std::int32_t caseStatus) {
  const std::u16string key = Decimal10(vilnorId);
  return TryUpdate(u" in UpdateCaseById",
                   {.journalQuery = u"SELECT Journal_ID from Vilnor Where VilnorID= " + key,
                    .where = u" Where VilnorId= " + key,
                    .journalUpdate = u"Update Journal SET Tekst = "},
                   caseId, caseStatus);
}

void DBVilnor::UpdateCase(const std::u16string& caseId, std::int32_t kestraId,
                          std::int32_t caseStatus, std::int32_t caseTypeId) {
  TryUpdateCase(caseId, kestraId, caseStatus, caseTypeId).update.OrEmpty();
}

UpdateAttempt DBVilnor::TryUpdateCase(const std::u16string& caseId, std::int32_t kestraId,
                                      std::int32_t caseStatus, std::int32_t caseTypeId) {
  const auto caseType = CaseTypeOf(caseTypeId);
  // Kept: any other type is silently ignored; callers pass only these two.
  if (!caseType) {
    return {};
  }
  LinkUpdate update{.journalQuery = u"SELECT Journal_ID from Vilnor",
                    .where = {},
                    .journalUpdate = u"Update Journal set Tekst = "};
  switch (*caseType) {
    case CaseType::PriorApproval:
      update.journalQuery += u" Where FHP_ID= ";
      update.where = u" Where FHP_ID= ";
      break;
    case CaseType::OrdinaryCase:
      update.journalQuery += u" Where PID= ";
      update.where = u" Where PID = ";
      break;
  }
  const std::u16string key = Decimal10(kestraId) + u" AND CaseType = " + Decimal10(caseTypeId);
  update.journalQuery += key;
  update.where += key;
  return TryUpdate(u" in UpdateCase", update, caseId, caseStatus);
}

}  // namespace db
