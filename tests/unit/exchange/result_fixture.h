// A result file, the database that it is entered into, and the three readers.
#pragma once

#include <algorithm>
#include <array>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "exchange/result_readers.h"
#include "fakes/component_fixture.h"

namespace exchange {

using automation::ToUtf8;
using platform::Answer;
using Statements = std::vector<std::u16string>;

inline const automation::AutomationError kServerGone{-2147467259, u"",
                                                     u"server closed the connection"};

class ResultReaders : public fakes::ComponentFixture, protected Events {
 protected:
  // The result of a request with the key 4711.
  void Read(RequestKind kind) {
    ReadResult({.kind = kind, .key = 4711, .folder = exchangeDirectory, .events = this});
  }
  void UpdateJournal() override {
    ++updateJournals;
    atUpdateJournal();
  }

  // The changes sent to the database, in order, without transactions and queries.
  Statements Changes() const {
    Statements changes;
    for (const auto& entry : database.LogOf(u"Execute -1: ")) {
      const auto statement = entry.substr(std::u16string_view(u"Execute -1: ").size());
      if (!statement.starts_with(u"Select")) {
        changes.push_back(statement);
      }
    }
    return changes;
  }
  // The exchange directory's files, by name.
  std::vector<std::string> Files() const {
    std::vector<std::string> names;
    for (const auto& file : std::filesystem::directory_iterator(folder / "Vilnor")) {
      names.push_back(file.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }
  // A journal text that an update can change.
  void AnswerJournal(const std::u16string& linkQuery) {
    database.Answer(linkQuery, {{u"Journal_ID"}, {{std::int32_t{900}}}});
    database.Answer(u"SELECT Tekst from Journal Where ID = 900",
                    {{u"Tekst"}, {{u"Ärende ref.nr !L-OLD"}}});
  }
  void AnswerLink(const std::u16string& query) {
    database.Answer(query, {{u"VilnorID", u"Journal_ID", u"CaseId"},
                            {{std::int32_t{77}, std::int32_t{900}, u"L-LINK"}}});
  }

  int updateJournals = 0;
  std::function<void()> atUpdateJournal = [] {};
};

inline std::string Element(const std::string& name, const std::optional<std::string>& text) {
  return text ? "<" + name + ">" + *text + "</" + name + ">" : "";
}

inline std::string ResultText(const std::optional<std::string>& cancelled,
                              const std::optional<std::string>& status,
                              const std::string& userDefData) {
  return "<?xml version='1.0' encoding='ISO-8859-1'?><Envelope><Result>" +
         Element("Cancelled", cancelled) + Element("Status", status) +
         "<Id>L-9</Id><UserName>k\xE5re</UserName><UserDefData>" + userDefData +
         "</UserDefData></Result></Envelope>";
}

// The three readers and their differences.
struct Reader {
  const char* name;
  RequestKind kind;
  const char16_t* file;
  const char* userDefData;
  const char16_t* existsQuery;
  const char16_t* updateQuery;
  const char16_t* deleteQuery;
};

inline constexpr auto kReaders = std::to_array<Reader>(
    {{"ReadNewFHP", RequestKind::NewFHP, u"OutNewFHP4711.xml", "55&amp;12&amp;3&amp;8&amp;A&amp;1",
      u"SELECT * FROM Vilnor WHERE FHP_ID = 4711 and CaseType = 1",
      u"SELECT Journal_ID from Vilnor Where FHP_ID= 4711 AND CaseType = 1",
      u"SELECT VilnorID, Journal_ID from Vilnor where CaseId = 'L-9'"},
     {"ReadNewCase", RequestKind::NewCase, u"OutNewCase4711.xml", "99&amp;12&amp;3",
      u"SELECT * FROM Vilnor WHERE PID = 4711 and CaseType = 9 and CaseId = 'L-9'",
      u"SELECT Journal_ID from Vilnor Where PID= 4711 AND CaseType = 9",
      u"SELECT VilnorID, Journal_ID from Vilnor where CaseId = 'L-9'"},
     {"ReadExistCase", RequestKind::ExistCase, u"OutExistCase4711.xml", "L-LINK",
      u"SELECT * FROM Vilnor WHERE VilnorId = 4711",
      u"SELECT Journal_ID from Vilnor Where VilnorID= 4711",
      u"SELECT VilnorID, Journal_ID from Vilnor where CaseId = 'L-9'"}});

// The statements of a deletion, with keys 0 when no link is found.
inline Statements Deletion(bool linkFound) {
  return linkFound ? Statements{u"Delete from Journal where id = 900",
                                u"Delete from Vilnor where Vilnorid = 77"}
                   : Statements{u"Delete from Journal where id = 0",
                                u"Delete from Vilnor where Vilnorid = 0"};
}

inline Statements Insertion(bool application) {
  const std::u16string now = u"#11-16-2026 14:05:00#";
  return {application ? u"Insert into Vilnor (PID, BID, RID, FHP_ID, CaseId, CaseType, Journal_ID, "
                        u"StatusCode, VilnorUser, RegDate) VALUES "
                        u"(55,12,3,4711,'L-9',1,0,5,'kåre'," +
                            now + u")"
                      : u"Insert into Vilnor (PID, BID, RID, CaseId, CaseType, Journal_ID, "
                        u"StatusCode, VilnorUser, RegDate) VALUES (4711,12,3,'L-9',9,0,5,'kåre'," +
                            now + u")",
          (application ? u"INSERT INTO Journal (PID,Tekst,BID,RID,Dato,KODE,Status,Fakturert, "
                         u"RefTBID) values (55,'Förhandsprövning, ärendenr: A&1 överförd till "
                         u"Vilnor Link ref.nr L-9',12,3,"
                       : u"INSERT INTO Journal (PID,Tekst,BID,RID,Dato,KODE,Status,Fakturert, "
                         u"RefTBID) values (4711,'Ärende upprättat i Vilnor Link ref.nr "
                         u"L-9',12,3,") +
              now + u",22302,'U',0, 501)",
          u"UPDATE Vilnor set Journal_ID = 502 WHERE VilnorId = 501"};
}

}  // namespace exchange
