// DBVilnor::AddNewCase: the link, its journal line, and the line's key in the link.
#include <optional>

#include "automation/date.h"
#include "automation/text.h"
#include "db/case_types.h"
#include "db/query.h"
#include "db/scalar_value.h"
#include "platform/clock.h"
#include "platform/conversions.h"
#include "platform/platform.h"
#include "util/sql_date.h"

namespace db {
namespace {

using automation::Decimal10;

// Today's date with the current time, for the session's database type.
std::u16string NowLiteral() {
  const automation::Date now = platform::Current().clock.Now();
  std::u16string time = automation::FormatTime(now);
  return util::GetSqlDate(automation::DayOf(now), false, time);
}

// The keys that the inserts of one transaction were given.
class NewKeys {
 public:
  // The key of the last insert on this connection. After a failure it is the empty text: the
  // statement that needs the key is then refused by the database, and the transaction rolled back.
  std::u16string Read() {
    automation::Value key;
    try {
      key = ReadScalarValue(u"Select @@Identity");
    } catch (...) {
      error_ = util::CurrentError();
    }
    return platform::ToText(key);
  }

  // Shows the failure, once the transaction is over.
  void ShowError() const {
    if (error_) {
      ShowScalarError(*error_);
    }
  }

 private:
  std::optional<automation::AutomationError> error_;
};

std::u16string Quoted(const std::u16string& text) {
  return u"'" + text + u"'";
}

std::u16string LinkInsert(const NewLink& link, CaseType type) {
  const std::u16string people =
      Decimal10(link.pid) + u"," + Decimal10(link.bid) + u"," + Decimal10(link.rid);
  // The journal line does not exist yet, its key is 0.
  const auto fromCaseId = [&] {
    return Quoted(link.caseId) + u"," + Decimal10(link.caseType) + u",0," + Decimal10(link.status) +
           u"," + Quoted(link.vilnorUser) + u"," + NowLiteral() + u")";
  };
  switch (type) {
    case CaseType::PriorApproval:
      return u"Insert into Vilnor (PID, BID, RID, FHP_ID, CaseId, CaseType, Journal_ID, "
             u"StatusCode, VilnorUser, RegDate) VALUES (" +
             people + u"," + Decimal10(link.fhpId) + u"," + fromCaseId();
    case CaseType::OrdinaryCase:
      return u"Insert into Vilnor (PID, BID, RID, CaseId, CaseType, Journal_ID, StatusCode, "
             u"VilnorUser, RegDate) VALUES (" +
             people + u"," + fromCaseId();
  }
  return {};
}

std::u16string JournalText(const NewLink& link, CaseType type) {
  switch (type) {
    case CaseType::PriorApproval:
      return u"Förhandsprövning, ärendenr: " + link.kestraCaseId +
             u" överförd till Vilnor Link ref.nr " + link.caseId;
    case CaseType::OrdinaryCase:
      return u"Ärende upprättat i Vilnor Link ref.nr " + link.caseId;
  }
  return {};
}

std::u16string JournalInsert(const NewLink& link, const std::u16string& text,
                             const std::u16string& vilnorId) {
  return u"INSERT INTO Journal (PID,Tekst,BID,RID,Dato,KODE,Status,Fakturert, RefTBID) values (" +
         Decimal10(link.pid) + u"," + Quoted(text) + u"," + Decimal10(link.bid) + u"," +
         Decimal10(link.rid) + u"," + NowLiteral() + u",22302,'U',0, " + vilnorId + u")";
}

}  // namespace

void DBVilnor::AddNewCase(std::int32_t pid, std::int32_t bid, std::int32_t rid,
                          const std::u16string& caseId, std::int32_t fhpId, std::int32_t caseTypeId,
                          std::int32_t statusCode, const std::u16string& vilnorUser,
                          const std::u16string& kestraCaseId) {
  TryAddNewCase({.pid = pid,
                 .bid = bid,
                 .rid = rid,
                 .caseId = caseId,
                 .fhpId = fhpId,
                 .caseType = caseTypeId,
                 .status = statusCode,
                 .vilnorUser = vilnorUser,
                 .kestraCaseId = kestraCaseId})
      .OrEmpty();
}

util::Attempt<void> DBVilnor::TryAddNewCase(const NewLink& link) {
  NewKeys keys;
  const auto insert = [&] {
    std::u16string journalText;
    // Kept: for another type no statement is built, so the one that the thread's last operation
    // left is carried out again; callers pass these two types only.
    if (const auto type = CaseTypeOf(link.caseType)) {
      journalText = JournalText(link, *type);
      CurrentConnectionState().gSql = LinkInsert(link, *type);
    }
    InTransaction([&] {
      ExecuteCurrentSql();
      const std::u16string vilnorId = keys.Read();
      Execute(JournalInsert(link, journalText, vilnorId));
      const std::u16string journalId = keys.Read();
      Execute(u"UPDATE Vilnor set Journal_ID = " + journalId + u" WHERE VilnorId = " + vilnorId);
    });
  };
  return TryWrite(u" in AddNewCase", insert, [&] { keys.ShowError(); });
}

}  // namespace db
