#include "windows/trips.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "automation/text.h"
#include "com/wide_text.h"
#include "com/win32.h"
#include "db/connection_state.h"
#include "db/db_vilnor.h"
#include "exchange/envelope.h"
#include "exchange/result_document_reader.h"
#include "fhp/application_form.h"
#include "fhp/application_records.h"
#include "fhp/cost_estimate.h"
#include "host/link_program.h"
#include "platform/conversions.h"
#include "platform/files.h"
#include "unit/fhp/counted_heap.h"
#include "windows/dom.h"
#include "windows/harness.h"
#include "windows/script.h"
// Must follow win32.h.
#include <psapi.h>

namespace benchmarks {
namespace {

const std::u16string kCaseId = u"26100417";

std::string Bytes(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// ADO as used by a program that knows its statements, and may also read their results.
class BareAdo {
 public:
  enum class Reading { Nothing, EachFieldOnce };

  explicit BareAdo(const Computer& computer, Reading reading = Reading::Nothing)
      : reading_(reading),
        database_(platform::Current().database),
        connection_(database_.NewConnection()) {
    connection_->Open(computer.connectionString(), u"", u"", platform::kOptionsUnspecified);
  }

  void Query(const std::u16string& statement, std::int32_t fields) {
    const auto rows = database_.NewRecordset();
    rows->SetCursorLocation(platform::CursorLocation::Client);
    rows->Open(statement, *connection_, platform::CursorType::Static,
               platform::LockType::BatchOptimistic, platform::kOptionsUnspecified);
    if (reading_ == Reading::EachFieldOnce) {
      Read(*rows, fields);
    }
    rows->Close();
  }
  std::u16string Key() {
    const auto rows = connection_->Execute(u"Select @@Identity", platform::kOptionsUnspecified);
    return platform::ToText(rows->Field(0));
  }
  platform::Connection& connection() { return *connection_; }
  void Run(const std::u16string& statement) {
    connection_->Execute(statement, platform::kOptionsUnspecified);
  }

 private:
  static void Read(platform::Recordset& rows, std::int32_t fields) {
    for (; !rows.Eof(); rows.MoveNext()) {
      for (std::int32_t field = 0; field < fields; ++field) {
        rows.Field(field);
      }
    }
  }

  Reading reading_;
  platform::Database& database_;
  std::unique_ptr<platform::Connection> connection_;
};

void RequestByAdo(const Computer& computer, const std::string& bytes, BareAdo::Reading reading) {
  BareAdo ado(computer, reading);
  ado.Query(u"SELECT * FROM SEPrerequest WHERE SEPrerequestID = 1017", 37);
  ado.Query(
      u"SELECT Worker.ToothSystem, Worker.ID, Worker.RID, Pasient.Fornavn, Pasient.Navn, "
      u"Worker.ReseptID FROM Worker INNER JOIN Pasient ON Worker.IDArkiv = Pasient.ID Where "
      u"Worker.ID = 41",
      6);
  ado.Query(
      u"Select pasient.Navn, pasient.adr1, pasient.adr2, pasient.postnr, pasient.organizationNo, "
      u"pasient.tlfPrivat, company.levno from pasient, company where company.idarkiv = pasient.id "
      u"and company.id = 31",
      7);
  ado.Query(u"SELECT Poststedsnavn FROM Postadresseregister where Postnr = '11122'", 1);
  ado.Query(u"SELECT ID, Fornavn, Navn, fDato , PersNr FROM Pasient where ID = 21001", 5);
  ado.Query(u"SELECT COUNT(*) AS Antal FROM SEPrerequestEstimateRows WHERE SEPrerequest_ID = 1017",
            1);
  ado.Query(
      u"SELECT  Count(SEPreRequestEstimateRowsID) AS SelectNoOf, RateNo, InternalCode, Debit, "
      u"IncrComp, NoOf, Amount, RegDate FROM SEPreRequestEstimateRows WHERE SEPreRequest_ID = 1017 "
      u"GROUP BY RateNo, Amount, InternalCode, Debit, IncrComp, NoOf, RegDate",
      8);
  ado.Query(u"SELECT ID from Pasient where Code1 = -32001", 1);
  ado.Query(u"SELECT UserName from VilnorPasient where PID = 9002", 1);
  std::ofstream(computer.exchangeFolder() / L"ado.xml", std::ios::binary) << bytes;
}

std::filesystem::path ResultFile(const Computer& computer) {
  return computer.exchangeFolder() / L"OutNewCase4711.xml";
}

void PutResult(const Computer& computer) {
  std::ofstream(ResultFile(computer), std::ios::binary)
      << "<?xml version='1.0' encoding='ISO-8859-1'?>\n<Envelope><NewCase><Cancelled>0</Cancelled>"
         "<Status>5</Status><Id>26100417</Id><UserName>anna</UserName><UserDefData>4711&amp;12"
         "&amp;3</UserDefData></NewCase></Envelope>\n";
}

void RemoveCase(const Computer& computer) {
  computer.Run(u"DELETE FROM Journal WHERE ID IN (SELECT Journal_ID FROM Vilnor WHERE CaseId = '" +
               kCaseId + u"')");
  computer.Run(u"DELETE FROM Vilnor WHERE CaseId = '" + kCaseId + u"'");
}

void TakeCaseAway(const Computer& computer) {
  if (std::filesystem::exists(ResultFile(computer))) {
    Fail("the result was not read");
  }
  RemoveCase(computer);
}

void EnterByAdo(const Computer& computer) {
  BareAdo ado(computer);
  ado.Query(
      u"SELECT * FROM Vilnor WHERE PID = 4711 and CaseType = 9 and CaseId = '" + kCaseId + u"'", 0);
  ado.connection().BeginTrans();
  ado.Run(
      u"Insert into Vilnor (PID, BID, RID, CaseId, CaseType, Journal_ID, StatusCode, "
      u"VilnorUser, RegDate) VALUES (4711,12,3,'" +
      kCaseId + u"',9,0,5,'anna'," + NowLiteral() + u")");
  const std::u16string vilnorId = ado.Key();
  ado.Run(
      u"INSERT INTO Journal (PID,Tekst,BID,RID,Dato,KODE,Status,Fakturert, RefTBID) values "
      u"(4711,'Ärende upprättat i Vilnor Link ref.nr " +
      kCaseId + u"',12,3," + NowLiteral() + u",22302,'U',0, " + vilnorId + u")");
  const std::u16string journalId = ado.Key();
  ado.Run(u"UPDATE Vilnor set Journal_ID = " + journalId + u" WHERE VilnorId = " + vilnorId);
  ado.connection().CommitTrans();
}

void ResultByAdo(const Computer& computer) {
  Dom dom;
  dom.Load(com::FromWide(ResultFile(computer).wstring()));
  EnterByAdo(computer);
  DeleteFileW(ResultFile(computer).c_str());
}

// Posted by the link program, delivered by the host's message loop.
void ResultByMessage() {
  const HWND window = FindWindowA("KestraToVilnor", nullptr);
  SendMessageA(window, static_cast<UINT>(exchange::RequestKind::NewCase), kPatient, 0);
}

// The case's rows after a result was entered, except their keys and the time of day.
std::u16string EnteredBy(const Computer& computer, const std::function<void()>& read) {
  PutResult(computer);
  read();
  const std::u16string rows = computer.Ask(
      u"SELECT json_group_array(json_array(V.PID, V.BID, V.RID, V.FHP_ID, V.CaseId, V.CaseType, "
      u"V.StatusCode, V.VilnorUser, date(V.RegDate), J.PID, J.Tekst, J.BID, J.RID, date(J.Dato), "
      u"J.KODE, J.Status, J.Fakturert, J.RefTBID = V.VilnorId)) "
      u"FROM Vilnor V LEFT JOIN Journal J ON J.ID = V.Journal_ID WHERE V.CaseId = '" +
      kCaseId + u"'");
  TakeCaseAway(computer);
  return rows;
}

// --- Parts of the operations, to see where their time goes.

void FindWays() {
  host::GetVilnorOutputPath().OrEmpty();
  host::GetVilnorCommandLine();
}

fhp::ApplicationRecords ReadRecords() {
  db::RenewGDB();
  auto records = fhp::ReadApplicationRecords(kFullApplication);
  db::ReleaseGDB();
  return records;
}

void BuildForms(fhp::ApplicationRecords& records) {
  exchange::RequestDocument document;
  fhp::AddApplicationForm(document, records);
  fhp::AddCostEstimate(document, records);
  document.Finish();
}

void WriteFile(const Computer& computer, const std::string& bytes) {
  platform::Current().files.ReplaceContents(
      com::FromWide((computer.exchangeFolder() / L"parts.xml").wstring()), bytes);
}

void ParseResult(const Computer& computer) {
  const exchange::ResultDocumentReader document(com::FromWide(ResultFile(computer).wstring()));
  std::u16string user;
  document.Read(u"UserName", user);
}

void MeasureParts(const Computer& computer, const std::string& bytes) {
  PutResult(computer);
  fhp::ApplicationRecords records = ReadRecords();
  const long before = fhp::Allocations();
  BuildForms(records);
  Print("allocations/both forms", static_cast<double>(fhp::Allocations() - before));
  Measure("parts",
          {{.name = "paths from the registry", .run = FindWays},
           {.name = "connecting", .run = [&] { const BareAdo ado(computer); }},
           {.name = "connecting, reading the application's records", .run = ReadRecords},
           {.name = "building both forms from the records", .run = [&] { BuildForms(records); }},
           {.name = "putting the request in place", .run = [&] { WriteFile(computer, bytes); }},
           {.name = "parsing the result once", .run = [&] { ParseResult(computer); }},
           {.name = "connecting, the statements of a result",
            .run = [&] { EnterByAdo(computer); },
            .before = [] {},
            .after = [&] { RemoveCase(computer); }}},
          60, 2);
}

std::size_t MemoryInUse() {
  PROCESS_MEMORY_COUNTERS counters{};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
  return counters.PagefileUsage;
}

}  // namespace

void MeasureTrips(Computer& computer) {
  const auto request = [&] { computer.vilnor().OpenWithNewFHP(kPatient, 12, 3, kFullApplication); };
  const auto requestByScript = [&] { RequestByScript(computer, L"script.xml"); };
  request();
  requestByScript();
  const std::string bytes = Bytes(computer.exchangeFolder() / L"InNewFHP1017.xml");
  const std::string scripts = Bytes(computer.exchangeFolder() / L"script.xml");
  if (bytes.empty() || scripts != bytes) {
    const auto [mine, other] =
        std::mismatch(bytes.begin(), bytes.end(), scripts.begin(), scripts.end());
    Fail("the script's request is not the component's: " +
         std::string(other, scripts.end()).substr(0, 200) + " instead of " +
         std::string(mine, bytes.end()).substr(0, 200));
  }
  const auto requestByAdo = [&](BareAdo::Reading reading) {
    return [&, reading] { RequestByAdo(computer, bytes, reading); };
  };
  Measure("request",
          {{.name = "Vilnor", .run = request},
           {.name = "ADO", .run = requestByAdo(BareAdo::Reading::Nothing)},
           {.name = "ADO, reading", .run = requestByAdo(BareAdo::Reading::EachFieldOnce)},
           {.name = "script", .run = requestByScript}},
          60, 2);

  const auto resultByAdo = [&] { ResultByAdo(computer); };
  const auto resultByScript = [&] { ResultByScript(computer); };
  const auto entered = EnteredBy(computer, ResultByMessage);
  if (EnteredBy(computer, resultByAdo) != entered ||
      EnteredBy(computer, resultByScript) != entered) {
    Fail("the result is not entered as the component does");
  }
  const auto prepare = [&] { PutResult(computer); };
  const auto undo = [&] { TakeCaseAway(computer); };
  Measure("result",
          {{.name = "Vilnor", .run = ResultByMessage, .before = prepare, .after = undo},
           {.name = "ADO", .run = resultByAdo, .before = prepare, .after = undo},
           {.name = "script", .run = resultByScript, .before = prepare, .after = undo}},
          60, 2);
  MeasureParts(computer, bytes);
  computer.MustBeQuiet();
}

void MeasureManyTrips(Computer& computer) {
  constexpr int kHundreds = 100;
  constexpr int kHundred = 100;
  // Between the trips the bare statements are measured: they show how busy the machine is with
  // other work.
  constexpr int kTripsToControl = 5;
  for (int hundred = 0; hundred < kHundreds; ++hundred) {
    double trips = 0;
    double controls = 0;
    for (int trip = 0; trip < kHundred; ++trip) {
      const double start = Now();
      computer.vilnor().OpenWithNewFHP(kPatient, 12, 3, kFullApplication);
      PutResult(computer);
      ResultByMessage();
      TakeCaseAway(computer);
      const double end = Now();
      trips += end - start;
      if (trip % kTripsToControl == 0) {
        RequestByAdo(computer, {}, BareAdo::Reading::Nothing);
        controls += Now() - end;
      }
    }
    Print("trips/time", trips / kHundred * 1e9);
    Print("trips/control", controls * kTripsToControl / kHundred * 1e9);
    Print("trips/memory", static_cast<double>(MemoryInUse()));
  }
  computer.MustBeQuiet();
}

}  // namespace benchmarks
