#include "exchange/request_writers.h"

#include "exchange/envelope.h"
#include "fakes/component_fixture.h"

namespace exchange {
namespace {

using platform::Icon;

constexpr const char* kDeclaration = "<?xml version='1.0' encoding='ISO-8859-1'?>\n";

class RequestWriters : public fakes::ComponentFixture {
 protected:
  RequestWriters() { std::filesystem::create_directory(folder / "Vilnor"); }
  std::string Text(const std::u16string& path) const { return automation::ToUtf8(path); }
};

TEST_F(RequestWriters, NewCaseRequestHasItsElementsInOrder) {
  const auto path =
      WriteNewCase({4711, 12, 3, u"194501011234", u"Anna", u"Berg"}, exchangeDirectory);
  EXPECT_EQ(path.Value(), ExchangePath(u"InNewCase4711.xml"));
  EXPECT_EQ(PendingResultPath(), ExchangePath(u"OutNewCase4711.xml"));
  EXPECT_EQ(
      Contents(u"InNewCase4711.xml"),
      kDeclaration + ("<Envelope LIFFVersion=\"2.0\"><NewCase><Result><ResultPath>" +
                      Text(ExchangePath(u"OutNewCase4711.xml")) +
                      "</ResultPath><ReturnWhen>7</ReturnWhen>"
                      "<UserDefData>4711&amp;12&amp;3</UserDefData>"
                      "<WnDNotification><ClassName>KestraToVilnor</ClassName>"
                      "<MessageId>10002</MessageId><WParam>4711</WParam></WnDNotification></Result>"
                      "<Title>(194501011234)</Title><PatientFirstName>Anna</PatientFirstName>"
                      "<PatientLastName>Berg</PatientLastName><PatientId>194501011234</PatientId>"
                      "</NewCase></Envelope>\n"));
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(RequestWriters, EmptyTextsMakeEmptyElements) {
  EXPECT_FALSE(WriteNewCase({-1, 0, 2147483647, u"", u"", u""}, exchangeDirectory).Failed());
  const std::string file = Contents(u"InNewCase-1.xml");
  EXPECT_NE(file.find("<UserDefData>-1&amp;0&amp;2147483647</UserDefData>"), std::string::npos);
  EXPECT_NE(file.find("<Title>()</Title><PatientFirstName/><PatientLastName/><PatientId/>"),
            std::string::npos);
}

TEST_F(RequestWriters, SwedishLettersAreSingleBytesAndOtherLettersReferences) {
  EXPECT_FALSE(
      WriteNewCase({1, 2, 3, u"x", u"Åsa-Märta é", u"Öberg € \U0001F600"}, exchangeDirectory)
          .Failed());
  const std::string file = Contents(u"InNewCase1.xml");
  EXPECT_NE(file.find("<PatientFirstName>\xC5sa-M\xE4rta \xE9</PatientFirstName>"),
            std::string::npos);
  EXPECT_NE(file.find("<PatientLastName>\xD6"
                      "berg &#8364; &#128512;</PatientLastName>"),
            std::string::npos);
}

TEST_F(RequestWriters, MarkupInNamesIsText) {
  EXPECT_FALSE(
      WriteNewCase({1, 2, 3, u"x", u"a<b>&\"'c]]>", u"1\r\n2\t3"}, exchangeDirectory).Failed());
  const std::string file = Contents(u"InNewCase1.xml");
  EXPECT_NE(file.find("<PatientFirstName>a&lt;b&gt;&amp;\"'c]]&gt;</PatientFirstName>"),
            std::string::npos);
  EXPECT_NE(file.find("<PatientLastName>1&#13;\n2\t3</PatientLastName>"), std::string::npos);
}

TEST_F(RequestWriters, ControlCharactersAndHalfSurrogatePairsDoNotStopARequest) {
  EXPECT_FALSE(WriteNewCase({1, 2, 3, u"x", u"An\u0001na\u000C", std::u16string{u'B', 0xD800}},
                            exchangeDirectory)
                   .Failed());
  EXPECT_TRUE(dialogs.shown.empty());
  const std::string file = Contents(u"InNewCase1.xml");
  EXPECT_NE(file.find("<PatientFirstName>Anna</PatientFirstName>"
                      "<PatientLastName>B&#65533;</PatientLastName>"),
            std::string::npos);
}

TEST_F(RequestWriters, MissingFolderIsReportedAndNothingIsWritten) {
  EXPECT_TRUE(WriteNewCase({1, 2, 3, u"x", u"a", u"b"}, hostPath + u"Nowhere").Failed());
  EXPECT_TRUE(WriteSearchPatient(u"x", hostPath + u"Nowhere").Failed());
  EXPECT_EQ(dialogs.shown,
            (std::vector<platform::MessageBox>{{.text = u"76 Path not found in WriteNewCase",
                                                .title = u"Vilnor Link connection",
                                                .icon = Icon::Exclamation},
                                               {.text = u"76 Path not found in WriteSearchPatient",
                                                .title = u"Vilnor Link connection",
                                                .icon = Icon::Exclamation}}));
}

TEST_F(RequestWriters, OlderFileOfTheSameNameIsReplaced) {
  Put(u"InNewCase1.xml", std::string(100000, 'x'));
  EXPECT_FALSE(WriteNewCase({1, 2, 3, u"s", u"a", u"b"}, exchangeDirectory).Failed());
  EXPECT_TRUE(Contents(u"InNewCase1.xml").starts_with(kDeclaration));
  EXPECT_TRUE(Contents(u"InNewCase1.xml").ends_with("</Envelope>\n"));
  EXPECT_FALSE(Exists(u"InNewCase1.xml.tmp"));
}

TEST_F(RequestWriters, ExistCaseCarriesTheLinkRecordsCaseIdTwice) {
  database.Answer(u"SELECT * FROM Vilnor WHERE VilnorId = 77", {{u"CaseId"}, {{u"L-4&5"}}});
  EXPECT_EQ(WriteExistCase(77, exchangeDirectory).Value(), ExchangePath(u"InExistCase77.xml"));
  EXPECT_EQ(PendingResultPath(), ExchangePath(u"OutExistCase77.xml"));
  EXPECT_EQ(
      Contents(u"InExistCase77.xml"),
      kDeclaration + ("<Envelope LIFFVersion=\"2.0\"><Case><Result><ResultPath>" +
                      Text(ExchangePath(u"OutExistCase77.xml")) +
                      "</ResultPath><ReturnWhen>7</ReturnWhen><UserDefData>L-4&amp;5</UserDefData>"
                      "<WnDNotification><ClassName>KestraToVilnor</ClassName>"
                      "<MessageId>10009</MessageId><WParam>77</WParam></WnDNotification></Result>"
                      "<CaseId>L-4&amp;5</CaseId></Case></Envelope>\n"));
  EXPECT_EQ(database.AliveConnections(), 0);
}

TEST_F(RequestWriters, ExistCaseWithoutALinkRecordIsStillWritten) {
  EXPECT_FALSE(WriteExistCase(5, exchangeDirectory).Failed());
  EXPECT_NE(Contents(u"InExistCase5.xml").find("<UserDefData/>"), std::string::npos);
  EXPECT_NE(Contents(u"InExistCase5.xml").find("</Result><CaseId/></Case>"), std::string::npos);
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(RequestWriters, ExistCaseWithoutADatabaseIsReportedAndNotWritten) {
  database.installed = false;
  EXPECT_TRUE(WriteExistCase(5, exchangeDirectory).Failed());
  EXPECT_EQ(dialogs.Texts(), std::vector<std::u16string>{
                                 u"429 ActiveX component can't create object in WriteExistCase"});
  EXPECT_FALSE(Exists(u"InExistCase5.xml"));
}

TEST_F(RequestWriters, ExistCaseWhoseLookupFailsIsWrittenWithoutACase) {
  database.FailStatement(u"SELECT * FROM Vilnor",
                         {-2147467259, u"", u"server closed the connection"});
  EXPECT_EQ(WriteExistCase(5, exchangeDirectory).Value(), ExchangePath(u"InExistCase5.xml"));
  EXPECT_EQ(dialogs.shown,
            (std::vector<platform::MessageBox>{
                {.text = u"-2147467259 server closed the connection in GetCaseIdByVilnorId",
                 .title = u"Vilnor Link connection",
                 .icon = Icon::Critical}}));
  EXPECT_NE(Contents(u"InExistCase5.xml").find("<UserDefData/>"), std::string::npos);
  EXPECT_NE(Contents(u"InExistCase5.xml").find("</Result><CaseId/></Case>"), std::string::npos);
}

TEST_F(RequestWriters, ExistCaseWithoutAFolderIsReported) {
  EXPECT_TRUE(WriteExistCase(5, hostPath + u"Nowhere").Failed());
  EXPECT_EQ(dialogs.shown,
            (std::vector<platform::MessageBox>{{.text = u"76 Path not found in WriteExistCase",
                                                .title = u"Vilnor Link connection",
                                                .icon = Icon::Exclamation}}));
}

TEST_F(RequestWriters, PendingResultIsThatOfTheLastRequestWithAPath) {
  EXPECT_FALSE(WriteNewCase({1, 2, 3, u"s", u"a", u"b"}, exchangeDirectory).Failed());
  database.installed = false;
  EXPECT_TRUE(WriteExistCase(5, exchangeDirectory).Failed());
  EXPECT_EQ(PendingResultPath(), ExchangePath(u"OutNewCase1.xml")) << "its lookup failed before";
  database.installed = true;
  EXPECT_TRUE(WriteExistCase(5, hostPath + u"Nowhere").Failed());
  EXPECT_EQ(PendingResultPath(), hostPath + u"Nowhere\\OutExistCase5.xml") << "its save failed";
}

TEST_F(RequestWriters, SearchExpectsNoAnswerAndKeepsThePendingResult) {
  EXPECT_FALSE(WriteNewCase({1, 2, 3, u"s", u"a", u"b"}, exchangeDirectory).Failed());
  EXPECT_EQ(WriteSearchPatient(u"19450101-1234", exchangeDirectory).Value(),
            ExchangePath(u"Search19450101-1234.xml"));
  EXPECT_EQ(Contents(u"Search19450101-1234.xml"),
            kDeclaration +
                std::string("<Envelope LIFFVersion=\"2.0\"><SearchCase><PatientId>19450101-1234"
                            "</PatientId></SearchCase></Envelope>\n"));
  EXPECT_EQ(PendingResultPath(), ExchangePath(u"OutNewCase1.xml"));
}

}  // namespace
}  // namespace exchange
