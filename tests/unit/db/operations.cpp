#include "operations.h"

#include <utility>

#include "fixture.h"

namespace unit {
namespace {

using automation::Value;
using db::DBVilnor;
using Answers = std::map<std::u16string, fakes::Rows>;

const std::u16string kStatic = u"Recordset.Open type 3, lock 4, options -1, cursor 3: ";
const std::u16string kKeyset = u"Recordset.Open type 1, lock 3, options -1, cursor 3: ";
const std::u16string kExecute = u"Execute -1: ";

std::vector<ExpectedCall> InOrder(const std::u16string& procedure,
                                  const std::vector<std::u16string>& entries) {
  std::vector<ExpectedCall> calls;
  std::transform(entries.begin(), entries.end(), std::back_inserter(calls), [&](const auto& entry) {
    return ExpectedCall{entry, {BoxIn(procedure)}};
  });
  return calls;
}

std::u16string Wide(const std::string& name) {
  return automation::FromUtf8(name);
}

// A lookup by one statement whose row is returned as a recordset.
template <class Run>
Operation RecordsetLookup(const std::string& name, const std::u16string& mode,
                          const std::u16string& statement, Run run) {
  return {
      .operation = name,
      .variant = "",
      .answers = {{statement, {{u"ID"}, {{1}}}}},
      .identities = {},
      .run = [run](DBVilnor& database) { return Value(run(database) != nullptr); },
      .result = true,
      .emptyResult = false,
      .calls = InOrder(Wide(name), {mode + statement, u"Recordset.Clone -1", u"Recordset.Close"}),
      .boxesWithoutARow = {}};
}

// A lookup by one statement that returns a single value.
template <class Run>
Operation ValueLookup(const std::string& name, const std::u16string& mode,
                      const std::u16string& statement, const fakes::Rows& rows, Run run,
                      const Value& result, const Value& emptyResult) {
  return {.operation = name,
          .variant = "",
          .answers = {{statement, rows}},
          .identities = {},
          .run = [run](DBVilnor& database) { return Value(run(database)); },
          .result = result,
          .emptyResult = emptyResult,
          .calls = InOrder(Wide(name), {mode + statement, u"Recordset.Close"}),
          .boxesWithoutARow = {}};
}

std::vector<Operation> RecordsetLookups() {
  return {
      RecordsetLookup("GetFHPById", kStatic,
                      u"SELECT * FROM SEPrerequest WHERE SEPrerequestID = 77",
                      [](DBVilnor& database) { return database.GetFHPById(77); }),
      RecordsetLookup(
          "GetBIDById", kStatic,
          u"SELECT Worker.ToothSystem, Worker.ID, Worker.RID, Pasient.Fornavn, Pasient.Navn, "
          u"Worker.ReseptID FROM Worker INNER JOIN Pasient ON Worker.IDArkiv = Pasient.ID Where "
          u"Worker.ID = 12",
          [](DBVilnor& database) { return database.GetBIDById(12); }),
      RecordsetLookup(
          "GetRIDById", kStatic,
          u"Select pasient.Navn, pasient.adr1, pasient.adr2, pasient.postnr, "
          u"pasient.organizationNo, pasient.tlfPrivat, company.levno from pasient, company where "
          u"company.idarkiv = pasient.id and company.id = 3",
          [](DBVilnor& database) { return database.GetRIDById(3); }),
      RecordsetLookup("GetPIDById", kKeyset,
                      u"SELECT ID, Fornavn, Navn, fDato , PersNr FROM Pasient where ID = 4711",
                      [](DBVilnor& database) { return database.GetPIDById(4711); }),
      RecordsetLookup(
          "GetPreRequestCostByFHPid", kStatic,
          u"SELECT  Count(SEPreRequestEstimateRowsID) AS SelectNoOf, RateNo, InternalCode, Debit, "
          u"IncrComp, NoOf, Amount, RegDate FROM SEPreRequestEstimateRows WHERE SEPreRequest_ID = "
          u"77 GROUP BY RateNo, Amount, InternalCode, Debit, IncrComp, NoOf, RegDate",
          [](DBVilnor& database) { return database.GetPreRequestCostByFHPid(77); }),
      RecordsetLookup("GetPatientByPID", kStatic,
                      u"SELECT  fDato, PersNr,ForNavn,Navn from Pasient where ID = 4711",
                      [](DBVilnor& database) { return database.GetPatientByPID(4711); }),
      RecordsetLookup("GetPatientSSNByPID", kStatic,
                      u"SELECT  fDato, PersNr from Pasient where ID = 4711",
                      [](DBVilnor& database) { return database.GetPatientSSNByPID(4711); }),
  };
}

std::vector<Operation> ValueLookups() {
  const Value noText = std::u16string();
  return {
      ValueLookup(
          "GetCaseIdByVilnorId", kStatic, u"SELECT * FROM Vilnor WHERE VilnorId = 5",
          {{u"VilnorId", u"CaseId"}, {{5, u"VL-1"}}},
          [](DBVilnor& database) { return database.GetCaseIdByVilnorId(5); }, u"VL-1", noText),
      ValueLookup(
          "CaseExists", kStatic, u"SELECT * FROM Vilnor WHERE FHP_ID = 77 and CaseType = 1",
          {{u"VilnorId"}, {{5}}}, [](DBVilnor& database) { return database.CaseExists(77, 1); },
          true, false),
      ValueLookup(
          "CaseExistsPID", kStatic,
          u"SELECT * FROM Vilnor WHERE PID = 4711 and CaseType = 9 and CaseId = 'VL-1'",
          {{u"VilnorId"}, {{5}}},
          [](DBVilnor& database) { return database.CaseExistsPID(4711, 9, u"VL-1"); }, true, false),
      ValueLookup(
          "GetVilnorIdByFHPId", kStatic,
          u"SELECT VilnorId from Vilnor where FHP_ID = 77 AND CaseType = 1", {{u"VilnorId"}, {{5}}},
          [](DBVilnor& database) { return database.GetVilnorIdByFHPId(77); }, 5, 0),
      ValueLookup(
          "GetCityByPostnr", kKeyset,
          u"SELECT Poststedsnavn FROM Postadresseregister where Postnr = '41301'",
          {{u"Poststedsnavn"}, {{u"Göteborg"}}},
          [](DBVilnor& database) { return database.GetCityByPostnr(41301); }, u"Göteborg", noText),
      ValueLookup(
          "PreRequestCostExists", kKeyset,
          u"SELECT COUNT(*) AS Antal FROM SEPrerequestEstimateRows WHERE SEPrerequest_ID = 77",
          {{u"Antal"}, {{1}}}, [](DBVilnor& database) { return database.PreRequestCostExists(77); },
          true, false),
      ValueLookup(
          "GetVilnorUserByPID", kKeyset, u"SELECT UserName from VilnorPasient where PID = 4711",
          {{u"UserName"}, {{u"åsa"}}},
          [](DBVilnor& database) { return database.GetVilnorUserByPID(4711); }, u"åsa", noText),
  };
}

// An operation without a result.
template <class Run>
Operation Write(const std::string& operation, const std::string& variant, const Answers& answers,
                Run run, const std::vector<ExpectedCall>& calls) {
  return {.operation = operation,
          .variant = variant,
          .answers = answers,
          .identities = {},
          .run =
              [run](DBVilnor& database) {
                run(database);
                return Value();
              },
          .result = {},
          .emptyResult = {},
          .calls = calls,
          .boxesWithoutARow = {}};
}

std::vector<Operation> Deletions() {
  const std::u16string byFhp = u"SELECT VilnorID, Journal_ID from Vilnor where FHP_ID = 77";
  const std::u16string byCase = u"SELECT VilnorID, Journal_ID from Vilnor where CaseId = 'VL-1'";
  const fakes::Rows link = {{u"VilnorID", u"Journal_ID"}, {{5, 40}, {6, 41}}};
  const auto calls = [](const std::u16string& procedure, const std::u16string& query) {
    return InOrder(procedure,
                   {kStatic + query, u"Recordset.Close", u"BeginTrans",
                    kExecute + u"Delete from Journal where id = 40",
                    kExecute + u"Delete from Vilnor where Vilnorid = 5", u"CommitTrans"});
  };
  return {
      Write(
          "DeleteFHP", "", {{byFhp, link}}, [](DBVilnor& database) { database.DeleteFHP(77); },
          calls(u"DeleteFHP", byFhp)),
      Write(
          "DeleteCase", "", {{byCase, link}},
          [](DBVilnor& database) { database.DeleteCase(u"  VL-1 "); },
          calls(u"DeleteCase", byCase)),
  };
}

// The calls of an update that finds journal line 40 with the text "Ref!VL-1".
std::vector<ExpectedCall> UpdateCalls(const std::u16string& procedure, const std::u16string& query,
                                      const std::u16string& linkUpdate,
                                      const std::u16string& journalUpdate) {
  return InOrder(procedure,
                 {kStatic + query, u"Recordset.Close",
                  kStatic + u"SELECT Tekst from Journal Where ID = 40", u"Recordset.Close",
                  u"BeginTrans", kExecute + linkUpdate, kExecute + journalUpdate, u"CommitTrans"});
}

std::vector<Operation> Updates() {
  const auto script = [](const std::u16string& query) {
    return Answers{
        {query, {{u"Journal_ID"}, {{40}, {41}}}},
        {u"SELECT Tekst from Journal Where ID = 40", {{u"Tekst"}, {{u"Överförd ref!VL-1"}}}}};
  };
  const std::u16string byId = u"SELECT Journal_ID from Vilnor Where VilnorID= 5";
  const std::u16string byFhp = u"SELECT Journal_ID from Vilnor Where FHP_ID= 77 AND CaseType = 1";
  const std::u16string byPid = u"SELECT Journal_ID from Vilnor Where PID= 4711 AND CaseType = 9";
  std::vector<Operation> updates = {
      Write(
          "UpdateCaseById", "", script(byId),
          [](DBVilnor& database) { database.UpdateCaseById(5, u"2002", 1); },
          UpdateCalls(u"UpdateCaseById", byId,
                      u"Update Vilnor SET CaseId = 2002, StatusCode = 1 Where VilnorId= 5",
                      u"Update Journal SET Tekst = 'Överförd ref2002' Where ID = 40")),
      Write(
          "UpdateCase", "OfApplication", script(byFhp),
          [](DBVilnor& database) { database.UpdateCase(u"2002", 77, 1, 1); },
          UpdateCalls(u"UpdateCase", byFhp,
                      u"Update Vilnor SET CaseId = 2002, StatusCode = 1 Where FHP_ID= 77 AND "
                      u"CaseType = 1",
                      u"Update Journal set Tekst = 'Överförd ref2002' Where ID = 40")),
      Write(
          "UpdateCase", "OfPatient", script(byPid),
          [](DBVilnor& database) { database.UpdateCase(u"2002", 4711, 1, 9); },
          UpdateCalls(u"UpdateCase", byPid,
                      u"Update Vilnor SET CaseId = 2002, StatusCode = 1 Where PID = 4711 AND "
                      u"CaseType = 9",
                      u"Update Journal set Tekst = 'Överförd ref2002' Where ID = 40")),
  };
  for (auto& update : updates) {
    update.boxesWithoutARow = {
        u"3021 Either BOF or EOF is True, or the current record has been "
        u"deleted. Requested operation requires a current record. in " +
        Wide(update.operation)};
  }
  return updates;
}

// GetScalarValue reports an unreadable key, which leaves a gap in the next statement.
std::vector<ExpectedCall> NewCaseCalls(const std::u16string& linkInsert,
                                       const std::u16string& journalInsert) {
  const std::u16string procedure = u"AddNewCase";
  std::vector<ExpectedCall> calls =
      InOrder(procedure,
              {u"BeginTrans", kExecute + linkInsert, kExecute + u"Select @@Identity",
               kExecute + journalInsert, kExecute + u"Select @@Identity",
               kExecute + u"UPDATE Vilnor set Journal_ID = 40 WHERE VilnorId = 5", u"CommitTrans"});
  const std::vector<std::u16string> keyUnread = {
      BoxIn(u"GetScalarValue"), u"-2147217900 Syntax error in the statement. in AddNewCase"};
  calls[2].boxesWhenItFails = keyUnread;
  calls[4].boxesWhenItFails = keyUnread;
  return calls;
}

std::vector<Operation> NewCases() {
  std::vector<Operation> operations = {
      Write(
          "AddNewCase", "OfApplication", {},
          [](DBVilnor& database) {
            database.AddNewCase(4711, 12, 3, u"VL-1", 77, 1, 5, u"åsa", u"K-9");
          },
          NewCaseCalls(
              u"Insert into Vilnor (PID, BID, RID, FHP_ID, CaseId, CaseType, Journal_ID, "
              u"StatusCode, VilnorUser, RegDate) VALUES (4711,12,3,77,'VL-1',1,0,5,'åsa',"
              u"#11-16-2026 14:05:00#)",
              u"INSERT INTO Journal (PID,Tekst,BID,RID,Dato,KODE,Status,Fakturert, RefTBID) "
              u"values (4711,'Förhandsprövning, ärendenr: K-9 överförd till Vilnor Link ref.nr "
              u"VL-1',12,3,#11-16-2026 14:05:00#,22302,'U',0, 5)")),
      Write(
          "AddNewCase", "OfPatient", {},
          [](DBVilnor& database) { database.AddNewCase(4711, 12, 3, u"VL-1", 4711, 9, 5, u"åsa"); },
          NewCaseCalls(
              u"Insert into Vilnor (PID, BID, RID, CaseId, CaseType, Journal_ID, StatusCode, "
              u"VilnorUser, RegDate) VALUES (4711,12,3,'VL-1',9,0,5,'åsa',#11-16-2026 14:05:00#)",
              u"INSERT INTO Journal (PID,Tekst,BID,RID,Dato,KODE,Status,Fakturert, RefTBID) "
              u"values (4711,'Ärende upprättat i Vilnor Link ref.nr VL-1',12,3,"
              u"#11-16-2026 14:05:00#,22302,'U',0, 5)")),
  };
  for (auto& operation : operations) {
    operation.identities = {5, 40};
  }
  return operations;
}

std::vector<Operation> Users() {
  const std::u16string byPid = u"SELECT UserName from VilnorPasient where PID = 4711";
  const std::u16string byCode = u"SELECT ID from Pasient where Code1 = -32000";
  const fakes::Rows name = {{u"UserName"}, {{u"åsa"}}};
  const Answers mapped = {{byPid, name}};
  // After a failed lookup of the current name, the update goes on as if there were none.
  const ExpectedCall look{kKeyset + byPid, {BoxIn(u"GetVilnorUserByPID")}};
  const ExpectedCall close{u"Recordset.Close", {BoxIn(u"GetVilnorUserByPID")}};
  return {
      Write(
          "AddNewVilnorUser", "", Answers{},
          [](DBVilnor& database) { database.AddNewVilnorUser(4711, u"'åsa'"); },
          InOrder(u"AddNewVilnorUser",
                  {kExecute + u"Insert into VilnorPasient (PID, UserName) VALUES (4711,'åsa')"})),
      Write(
          "DeleteVilnorUser", "", Answers{},
          [](DBVilnor& database) { database.DeleteVilnorUser(4711); },
          InOrder(u"DeleteVilnorUser", {kExecute + u"Delete from VilnorPasient where PID = 4711"})),
      Write("UpdateVilnorUser", "ToAnotherName", mapped,
            [](DBVilnor& database) { database.UpdateVilnorUser(4711, u"'per'"); },
            {look,
             close,
             {kExecute + u"Update VilnorPasient SET PID = 4711, UserName = 'per' Where PID= 4711",
              {BoxIn(u"AddNewVilnorUser")}}}),
      Write("UpdateVilnorUser", "ToNoName", mapped,
            [](DBVilnor& database) { database.UpdateVilnorUser(4711, u""); },
            {look,
             close,
             {kExecute + u"Delete from VilnorPasient where PID = 4711",
              {BoxIn(u"DeleteVilnorUser")}}}),
      Write("UpdateVilnorUser", "FromNoName", Answers{},
            [](DBVilnor& database) { database.UpdateVilnorUser(4711, u"'per'"); },
            {look,
             {kExecute + u"Insert into VilnorPasient (PID, UserName) VALUES (4711,'per')",
              {BoxIn(u"AddNewVilnorUser")}}}),
      {.operation = "GetVilnorUserByCode1",
       .variant = "",
       .answers = {{byCode, {{u"ID"}, {{4711}}}}, {byPid, name}},
       .identities = {},
       .run = [](DBVilnor& database) { return Value(database.GetVilnorUserByCode1(-32000)); },
       .result = u"åsa",
       .emptyResult = u"",
       .calls = {{kKeyset + byCode, {BoxIn(u"GetVilnorUserByCode1")}},
                 {u"Recordset.Close", {BoxIn(u"GetVilnorUserByCode1")}},
                 look,
                 close},
       .boxesWithoutARow = {kAlreadyOpen + u"GetVilnorUserByPID"}},
  };
}

}  // namespace

void Script(fakes::Database& database, const Operation& operation) {
  for (const auto& [statement, rows] : operation.answers) {
    database.Answer(statement, rows);
  }
  if (!operation.identities.empty()) {
    database.AnswerIdentities(operation.identities);
  }
}

const std::vector<Operation>& Operations() {
  static const std::vector<Operation> operations = [] {
    std::vector<Operation> all;
    for (auto& group :
         {RecordsetLookups(), ValueLookups(), Deletions(), Updates(), NewCases(), Users()}) {
      all.insert(all.end(), group.begin(), group.end());
    }
    return all;
  }();
  return operations;
}

}  // namespace unit
