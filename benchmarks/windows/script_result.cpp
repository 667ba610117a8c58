#include "automation/text.h"
#include "exchange/user_def_data.h"
#include "platform/conversions.h"
#include "windows/harness.h"
#include "windows/script.h"
#include "windows/script_objects.h"

namespace benchmarks {
namespace {

using automation::Decimal10;
using automation::Value;
using platform::ToInt32;
using platform::ToText;
using Text = std::u16string;

struct Outcome {
  std::int32_t status = 0;
  Text caseId;
  Text userName;
  exchange::NewCaseData data;
};

LateBound Load(const Text& path) {
  auto document = LateBound::Create(L"MSXML2.DOMDocument");
  document.Put(L"async", false);
  document.Put(L"validateOnParse", false);
  document.Put(L"resolveExternals", false);
  document.Call(L"load", path);
  if (ToInt32(document.Object(L"parseError").Get(L"errorCode")) != 0) {
    Fail("the script cannot load the result");
  }
  return document;
}

Value First(const LateBound& document, const char16_t* tag) {
  return document.Object(L"getElementsByTagName", tag).Object(L"item", 0).Get(L"nodeTypedValue");
}

// Loaded a second time if the user has not cancelled, as the component does.
Outcome ReadOutcome(const Text& path) {
  constexpr std::int32_t kCancelled = 1;
  if (ToInt32(First(Load(path), u"Cancelled")) == kCancelled) {
    return {};
  }
  const LateBound document = Load(path);
  return {.status = ToInt32(First(document, u"Status")),
          .caseId = ToText(First(document, u"Id")),
          .userName = ToText(First(document, u"UserName")),
          .data = exchange::SplitNewCaseData(ToText(First(document, u"UserDefData")))};
}

Text Quoted(const Text& text) {
  return u"'" + text + u"'";
}

Text NewKey(const LateBound& connection) {
  return ToText(
      connection.Object(L"Execute", u"Select @@Identity").Object(L"Fields", 0).Get(L"Value"));
}

void AddCase(const LateBound& connection, const Outcome& outcome) {
  const Text people =
      Decimal10(kPatient) + u"," + Decimal10(outcome.data.bid) + u"," + Decimal10(outcome.data.rid);
  connection.Call(L"BeginTrans");
  connection.Call(L"Execute",
                  u"Insert into Vilnor (PID, BID, RID, CaseId, CaseType, Journal_ID, StatusCode, "
                  u"VilnorUser, RegDate) VALUES (" +
                      people + u"," + Quoted(outcome.caseId) + u",9,0," +
                      Decimal10(outcome.status) + u"," + Quoted(outcome.userName) + u"," +
                      NowLiteral() + u")");
  const Text vilnorId = NewKey(connection);
  connection.Call(L"Execute",
                  u"INSERT INTO Journal (PID,Tekst,BID,RID,Dato,KODE,Status,Fakturert, RefTBID) "
                  u"values (" +
                      Decimal10(kPatient) + u"," +
                      Quoted(u"Ärende upprättat i Vilnor Link ref.nr " + outcome.caseId) + u"," +
                      Decimal10(outcome.data.bid) + u"," + Decimal10(outcome.data.rid) + u"," +
                      NowLiteral() + u",22302,'U',0, " + vilnorId + u")");
  const Text journalId = NewKey(connection);
  connection.Call(L"Execute", u"UPDATE Vilnor set Journal_ID = " + journalId +
                                  u" WHERE VilnorId = " + vilnorId);
  connection.Call(L"CommitTrans");
}

}  // namespace

void ResultByScript(const Computer& computer) {
  const Text path = ExchangeFolder(LateBound::Create(L"WScript.Shell")) + u"\\OutNewCase" +
                    Decimal10(kPatient) + u".xml";
  const Outcome outcome = ReadOutcome(path);
  constexpr std::int32_t kSent = 5;
  if (outcome.status != kSent) {
    return;
  }
  const LateBound connection = Connect(computer);
  const LateBound existing =
      Query(connection, u"SELECT * FROM Vilnor WHERE PID = " + Decimal10(kPatient) +
                            u" and CaseType = 9 and CaseId = " + Quoted(outcome.caseId));
  if (AtEnd(existing)) {
    AddCase(connection, outcome);
  }
  LateBound::Create(L"Scripting.FileSystemObject").Call(L"DeleteFile", path);
}

}  // namespace benchmarks
