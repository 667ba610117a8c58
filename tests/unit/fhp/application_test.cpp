// The request file as a whole: envelope, order of the calls, failures, and the state afterwards.
#include "fhp/application.h"

#include <array>
#include <gmock/gmock.h>

#include "automation/date.h"
#include "db/connection_state.h"
#include "exchange/envelope.h"
#include "fhp/identity.h"
#include "unit/fhp/fixture.h"

namespace fhp {
namespace {

using Texts = std::vector<std::u16string>;

const std::u16string kNotSet = u"91 Object variable or With block variable not set in WriteNewFHP";
const std::u16string kNull = u"94 Invalid use of Null in WriteNewFHP";
const std::u16string kStillOpen = u"3705 Operation is not allowed when the object is open. in ";

class WriteNewFHPTest : public FhpFixture {
 protected:
  bool Holds(const std::string& part) const { return File().find(part) != std::string::npos; }
};

TEST_F(WriteNewFHPTest, MinimalApplicationIsWrittenAsTheExpectedFile) {
  EXPECT_EQ(Write(), ExchangePath(u"InNewFHP8.xml"));
  const auto item = [](const std::string& key, const std::string& value) {
    return "<FormItem><FormItemKey>" + key + "</FormItemKey>" +
           (value.empty() ? "<FormItemValue/>" : "<FormItemValue>" + value + "</FormItemValue>") +
           "</FormItem>";
  };
  EXPECT_EQ(File(),
            "<?xml version='1.0' encoding='ISO-8859-1'?>\n"
            "<Envelope LIFFVersion=\"2.0\"><NewCase><Result><ResultPath>" +
                automation::ToUtf8(ExchangePath(u"OutNewFHP8.xml")) +
                "</ResultPath><ReturnWhen>7</ReturnWhen>"
                "<UserDefData>5&amp;6&amp;7&amp;8&amp;A1</UserDefData>"
                "<WnDNotification><ClassName>KestraToVilnor</ClassName>"
                "<MessageId>10001</MessageId><WParam>8</WParam></WnDNotification></Result>"
                "<Title>FHP700315AB</Title><PatientFirstName>Anna</PatientFirstName>"
                "<PatientLastName>Berg</PatientLastName><PatientId>19700315-1234"
                "</PatientId><Contribution><Heading/><Statement/><FormDescr>"
                "<FormDescrId>108692</FormDescrId>" +
                item("edtArendeNr", "A1") + item("edtVardgivareNamn", "Kliniken") +
                item("edtVardgivareAdress", "Storgatan 1") + item("edtVardgivarePostNr", "11122") +
                item("edtVardgivarePostort", "Stockholm") + item("edtVardgivareOrgNr", "5566-1") +
                item("edtPatientPersonNr", "19700315-1234") + item("edtPatientNamn", "Anna Berg") +
                item("edtOrtDatum", "Stockholm 2026-11-16") + item("edtTelefon", "") +
                item("edtNamnfortydligande", "Eva Ek") +
                "</FormDescr></Contribution><Participant><UserId>anmeld</UserId>"
                "</Participant></NewCase></Envelope>\n");
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(WriteNewFHPTest, FileIsNamedByTheApplicationInTheDirectoryItself) {
  Write();
  database.Answer(u"SELECT * FROM SEPrerequest WHERE SEPrerequestID = 1234",
                  {{u"BID", u"RID", u"PID", u"CaseNo"}, {{12, 3, 4711, u"A1"}}});
  // Missing columns end in the box; the file names are already set by then.
  EXPECT_TRUE(WriteNewFHP(5, 6, 7, 1234, u"C:\\X").Failed());
  EXPECT_EQ(exchange::PendingResultPath(), u"C:\\X\\OutNewFHP1234.xml");
}

TEST_F(WriteNewFHPTest, AnswerIsExpectedUnderTheArgumentsKey) {
  Write();
  EXPECT_EQ(exchange::PendingResultPath(), ExchangePath(u"OutNewFHP8.xml"));
  EXPECT_TRUE(Holds("<WParam>8</WParam>"));
}

TEST_F(WriteNewFHPTest, UserDefDataHoldsTheArgumentsNotTheRowsKeys) {
  Write();
  EXPECT_TRUE(Holds("<UserDefData>5&amp;6&amp;7&amp;8&amp;A1</UserDefData>"));
}

TEST_F(WriteNewFHPTest, NamesAndCaseNoKeepTheirBlanks) {
  application[u"CaseNo"] = u" A1 ";
  patient[u"Fornavn"] = u" Anna ";
  patient[u"Navn"] = u" Berg\t";
  Write();
  EXPECT_TRUE(Holds("<UserDefData>5&amp;6&amp;7&amp;8&amp; A1 </UserDefData>"));
  EXPECT_TRUE(Holds("<PatientFirstName> Anna </PatientFirstName>"));
  EXPECT_TRUE(Holds("<PatientLastName> Berg\t</PatientLastName>"));
  EXPECT_TRUE(Holds("<Title>FHP700315  </Title>"));
}

TEST_F(WriteNewFHPTest, UserDefDataKeepsItsLastSeparatorWithoutACaseNo) {
  database.Answer(u"q", {{u"CaseNo"}, {{Null()}}});
  auto connection = database.NewConnection();
  connection->Open(u"", u"", u"", -1);
  constexpr auto kColumns = std::to_array<std::u16string_view>({u"CaseNo"});
  const Record row(connection->Execute(u"q", -1), kColumns);
  EXPECT_EQ(UserDefData({5, 6, 7, 8}, row), u"5&6&7&8&");
  EXPECT_EQ(UserDefData({-5, 0, 2147483647, 8}, row), u"-5&0&2147483647&8&");
}

TEST_F(WriteNewFHPTest, TitleHasBirthDateAndInitials) {
  patient[u"fDato"] = automation::MakeDate({.year = 1942, .month = 3, .day = 15});
  Write();
  EXPECT_TRUE(Holds("<Title>FHP420315AB</Title>"));
  patient[u"Fornavn"] = u"";
  patient[u"Navn"] = u"Å";
  Write();
  EXPECT_TRUE(Holds("<Title>FHP420315\xC5</Title>"));
}

TEST_F(WriteNewFHPTest, InitialOutsideTheBasicPlaneIsKeptComplete) {
  patient[u"Fornavn"] = u"\U00010400nna";
  patient[u"Navn"] = u"\U0001D50Ferg";
  Write();
  EXPECT_TRUE(Holds("<Title>FHP700315&#66560;&#120079;</Title>"));
  patient[u"Navn"] = std::u16string{0xD835};
  Write();
  EXPECT_TRUE(Holds("<Title>FHP700315&#66560;&#65533;</Title>"));
  patient[u"Navn"] = std::u16string{0xD835, u'e', u'r', u'g'};
  Write();
  EXPECT_TRUE(Holds("<Title>FHP700315&#66560;&#65533;</Title>"));
}

TEST_F(WriteNewFHPTest, MissingNameAddsNothingToTheTitle) {
  database.Answer(u"q", {{u"fornavn", u"Navn"}, {{Null(), u"Berg"}, {u"Anna", Null()}}});
  auto connection = database.NewConnection();
  connection->Open(u"", u"", u"", -1);
  ApplicationRecords records;
  records.personNumber = u"19420315-1234";
  constexpr auto kColumns = std::to_array<std::u16string_view>({u"fornavn", u"Navn"});
  records.patient = Record(connection->Execute(u"q", -1), kColumns);
  EXPECT_EQ(CaseTitle(records), u"FHP420315B");
  records.patient.MoveNext();
  EXPECT_EQ(CaseTitle(records), u"FHP420315A");
}

TEST_F(WriteNewFHPTest, TitleOfAHundredYearOldPatientHasAPlusSign) {
  patient[u"fDato"] = automation::MakeDate({.year = 1926, .month = 11, .day = 16});
  Write();
  EXPECT_TRUE(Holds("<PatientId>19261116+1234</PatientId>"));
  patient[u"fDato"] = automation::MakeDate({.year = 1926, .month = 11, .day = 17});
  Write();
  EXPECT_TRUE(Holds("<PatientId>19261117-1234</PatientId>"));
}

TEST_F(WriteNewFHPTest, WithoutAUserNameThereIsNoParticipant) {
  AnswerParticipant(-32000, u"");
  EXPECT_NE(Write(), u"");
  EXPECT_TRUE(Holds("</Contribution></NewCase>"));
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(WriteNewFHPTest, UnknownParticipantCodeIsReportedAndTheFileIsWritten) {
  database.Answer(u"SELECT ID from Pasient where Code1 = -32000", {});
  EXPECT_NE(Write(), u"");
  EXPECT_FALSE(Holds("<Participant>"));
  EXPECT_EQ(Boxes(), Texts{kStillOpen + u"GetVilnorUserByPID"});
}

TEST_F(WriteNewFHPTest, LookupsAreMadeInOrder) {
  UseOlderPatient();
  AddEstimateRow();
  Write();
  std::vector<std::string> froms;
  for (const auto& call : database.LogOf(u"Recordset.Open")) {
    const std::string text = automation::ToUtf8(call);
    const auto key = text.find_last_of("='");
    froms.push_back(text.substr(text.find("options -1, cursor 3: ") + 22, 14) + "…" +
                    text.substr(key == std::string::npos ? 0 : text.find_last_of(' ')));
  }
  EXPECT_THAT(froms,
              testing::ElementsAre("SELECT * FROM … 8", "SELECT Worker.… 12", "Select pasient… 3",
                                   "SELECT Postste… '11122'", "SELECT ID, For… 4711",
                                   "SELECT COUNT(*… 8", "SELECT  Count(… RegDate",
                                   "SELECT ID from… -32001", "SELECT UserNam… 132001"));
}

TEST_F(WriteNewFHPTest, DatabaseIsReleasedAfterTheFileIsWritten) {
  UseOlderPatient();
  AddEstimateRow();
  Write();
  EXPECT_EQ(database.AliveConnections(), 0);
  EXPECT_EQ(database.AliveRecordsets(), 0);
  EXPECT_EQ(db::CurrentConnectionState().gDB, nullptr);
}

TEST_F(WriteNewFHPTest, DatabaseIsReleasedAfterAnErrorAndTheNextAttemptWorks) {
  application[u"CaseNo"] = Null();
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(database.AliveConnections(), 0);
  EXPECT_EQ(database.AliveRecordsets(), 0);
  application[u"CaseNo"] = u"A1";
  EXPECT_NE(Write(), u"");
  EXPECT_EQ(Boxes(), Texts{kNull});
}

TEST_F(WriteNewFHPTest, ErrorBoxHasTitleAndIcon) {
  application[u"CaseNo"] = Null();
  Write();
  EXPECT_EQ(dialogs.shown, (std::vector<platform::MessageBox>{{.text = kNull,
                                                               .title = u"Vilnor Link connection",
                                                               .icon = platform::Icon::Exclamation,
                                                               .buttons = platform::Buttons::Ok}}));
}

TEST_F(WriteNewFHPTest, MissingApplicationIsReported) {
  application.clear();
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(Boxes(), Texts{kNotSet});
  EXPECT_FALSE(Exists(u"InNewFHP8.xml"));
}

// A lookup without a row leaves the shared recordset open, so the next lookup reports that too.
TEST_F(WriteNewFHPTest, MissingClinicianIsReported) {
  clinician.clear();
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(Boxes(), (Texts{kStillOpen + u"GetRIDById", kNotSet}));
  EXPECT_FALSE(Exists(u"InNewFHP8.xml"));
}

TEST_F(WriteNewFHPTest, MissingProviderIsReported) {
  provider.clear();
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(Boxes(), Texts{kNotSet});
  EXPECT_FALSE(Exists(u"InNewFHP8.xml"));
}

TEST_F(WriteNewFHPTest, UnknownPostcodeIsReported) {
  city.clear();
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(Boxes(),
            (Texts{kStillOpen + u"GetPIDById", kStillOpen + u"PreRequestCostExists", kNotSet}));
  EXPECT_FALSE(Exists(u"InNewFHP8.xml"));
}

TEST_F(WriteNewFHPTest, NonNumericPostcodeIsReported) {
  provider[u"postnr"] = u"SE-11122";
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(Boxes(), Texts{u"13 Type mismatch in WriteNewFHP"});
}

TEST_F(WriteNewFHPTest, FailedTownLookupIsReportedAndTheTownIsEmpty) {
  database.FailStatement(u"SELECT Poststedsnavn", {1001, u"Test", u"Scripted failure"});
  EXPECT_NE(Write(), u"");
  EXPECT_EQ(Boxes(), Texts{u"1001 Scripted failure in GetCityByPostnr"});
  EXPECT_TRUE(Holds("<FormItemKey>edtVardgivarePostort</FormItemKey><FormItemValue/>"));
}

TEST_F(WriteNewFHPTest, FailedRowCountIsReportedAndTheEstimateIsLeftOut) {
  UseOlderPatient();
  AddEstimateRow();
  database.FailStatement(u"SELECT COUNT(*)", {1001, u"Test", u"Scripted failure"});
  EXPECT_NE(Write(), u"");
  EXPECT_EQ(Boxes(), Texts{u"1001 Scripted failure in PreRequestCostExists"});
  EXPECT_FALSE(Holds("<FormDescrId>108696<"));
  EXPECT_TRUE(Holds("<UserId>anmeld</UserId>"));
}

TEST_F(WriteNewFHPTest, PostcodeWithABlankIsANumberInLocalesThatGroupByBlanks) {
  provider[u"postnr"] = u"111 22";
  EXPECT_NE(Write(), u"");
  EXPECT_TRUE(Boxes().empty());
  EXPECT_TRUE(
      Holds("<FormItemKey>edtVardgivarePostNr</FormItemKey>"
            "<FormItemValue>111 22</FormItemValue>"));
  EXPECT_TRUE(
      Holds("<FormItemKey>edtVardgivarePostort</FormItemKey>"
            "<FormItemValue>Stockholm</FormItemValue>"));
  locale.regional = {};
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(Boxes(), Texts{u"13 Type mismatch in WriteNewFHP"});
}

TEST_F(WriteNewFHPTest, MissingPatientIsReported) {
  patient.clear();
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(Boxes(), (Texts{kStillOpen + u"PreRequestCostExists", kNotSet}));
  EXPECT_FALSE(Exists(u"InNewFHP8.xml"));
}

TEST_F(WriteNewFHPTest, MissingColumnIsReported) {
  application.erase(u"LAF");
  EXPECT_EQ(Write(), u"");
  ASSERT_EQ(Boxes().size(), 1U);
  EXPECT_TRUE(Boxes().front().starts_with(u"3265 Item cannot be found"));
}

TEST_F(WriteNewFHPTest, UninstalledDatabaseInterfaceIsReported) {
  database.installed = false;
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(Boxes(), Texts{u"429 ActiveX component can't create object in WriteNewFHP"});
}

TEST_F(WriteNewFHPTest, ControlCharacterIsLeftOut) {
  application[u"Anamnes"] = u"sid\u000Cbrytning";
  EXPECT_NE(Write(), u"");
  EXPECT_TRUE(Boxes().empty());
  EXPECT_TRUE(Holds("<FormItemValue>sidbrytning</FormItemValue>"));
}

TEST_F(WriteNewFHPTest, OlderFileIsReplaced) {
  Put(u"InNewFHP8.xml", std::string(100000, 'x'));
  Write();
  EXPECT_TRUE(File().starts_with("<?xml"));
  EXPECT_TRUE(File().ends_with("</Envelope>\n"));
}

TEST_F(WriteNewFHPTest, MissingDirectoryIsReported) {
  Write();
  EXPECT_TRUE(WriteNewFHP(5, 6, 7, 8, hostPath + u"Nowhere").Failed());
  EXPECT_EQ(Boxes(), Texts{u"76 Path not found in WriteNewFHP"});
}

// A directory that cannot be written.
class WriteProtected : public fakes::RealFiles {
 public:
  void ReplaceContents(const std::u16string& /*path*/, std::string_view /*bytes*/) override {
    throw automation::AutomationError(automation::RuntimeError::PermissionDenied);
  }
};

TEST_F(WriteNewFHPTest, UnwritableDirectoryLeavesTheEarlierFileUntouched) {
  Put(u"InNewFHP8.xml", "earlier");
  WriteProtected protectedFiles;
  platform::Platform withProtected = fakes::With(ports, protectedFiles);
  platform::Use(withProtected);
  EXPECT_EQ(Write(), u"");
  platform::Use(ports);
  EXPECT_EQ(Boxes(), Texts{u"70 Permission denied in WriteNewFHP"});
  EXPECT_EQ(File(), "earlier");
  EXPECT_EQ(exchange::PendingResultPath(), ExchangePath(u"OutNewFHP8.xml"));
}

TEST_F(WriteNewFHPTest, AnyFailingDatabaseCallLeavesNoFileOrACompleteOne) {
  UseOlderPatient();
  AddEstimateRow();
  database.LogReads(true);
  Write();
  const auto calls = database.Log();
  const std::string whole = File();
  for (std::size_t call = 1; call <= calls.size(); ++call) {
    std::filesystem::remove(folder / "Vilnor" / "InNewFHP8.xml");
    dialogs.shown.clear();
    database.FailCall(call, {1001, u"Test", u"Scripted failure"});
    const auto path = Write();
    database.ClearFailures();
    if (calls[call - 1] == u"Recordset.GetRows") {
      // The fields were then read one by one.
      EXPECT_TRUE(dialogs.shown.empty()) << call;
      EXPECT_EQ(File(), whole) << call;
      continue;
    }
    // Whether or not a file was written (the lookups of the town, the row count and the participant
    // go on without an answer), the failure is reported.
    EXPECT_FALSE(dialogs.shown.empty()) << call;
    EXPECT_EQ(path.empty(), !Exists(u"InNewFHP8.xml")) << call;
    EXPECT_TRUE(path.empty() || File().ends_with("</Envelope>\n")) << call;
    EXPECT_EQ(database.AliveConnections(), 0) << call;
  }
  EXPECT_NE(whole.find("<FormDescrId>108696<"), std::string::npos);
}

}  // namespace
}  // namespace fhp
