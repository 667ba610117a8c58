#include "simulator/core/request.h"

#include <optional>

#include "simulator/core/problem.h"
#include "unit/simulator/fixture.h"

namespace {

using simulator::RequestKind;
using testing::HasSubstr;

class Request : public simulator_test::Fixture {
 protected:
  simulator::Request Read(const std::string& bytes) {
    return simulator::ReadRequest(files_, documents_, File(bytes));
  }
  // The error reported for the file; "" when it is read.
  std::string ProblemOf(const std::string& bytes) {
    try {
      Read(bytes);
    } catch (const simulator::Problem& problem) {
      return problem.what();
    }
    return {};
  }
  static std::string Replaced(std::string text, const std::string& part, const std::string& with) {
    return text.replace(text.find(part), part.size(), with);
  }
};

TEST_F(Request, NewCaseIsReadWithPatientKeyAndAnswerBlock) {
  const auto request = Read(NewCase());
  EXPECT_EQ(request.kind, RequestKind::NewCase);
  EXPECT_EQ(request.firstName, u"Åsa");
  EXPECT_EQ(request.lastName, u"Öberg");
  EXPECT_EQ(request.patientId, u"19450101-1234");
  EXPECT_EQ(request.title, u"(19450101-1234)");
  EXPECT_EQ(request.resultPath, u"C:\\X\\Out4711.xml");
  EXPECT_EQ(request.userDefData, u"4711&12&3");
  EXPECT_EQ(request.notification.className, u"KestraToVilnor");
  EXPECT_EQ(request.notification.message, 10002U);
  EXPECT_EQ(request.notification.wParam, 4711);
  EXPECT_TRUE(request.ExpectsAnswer());
}

TEST_F(Request, NewCaseWithFormsIsAPriorApproval) {
  const auto request = Read(PriorApproval());
  EXPECT_EQ(request.kind, RequestKind::PriorApproval);
  EXPECT_EQ(request.participant, u"annab");
  EXPECT_EQ(request.userDefData, u"5&6&7&1234&A1");
  EXPECT_EQ(request.firstName, u"");
}

TEST_F(Request, ExistingCaseIsReadWithItsCaseId) {
  const auto request = Read(ExistingCase());
  EXPECT_EQ(request.kind, RequestKind::ExistingCase);
  EXPECT_EQ(request.caseId, u"26-100");
  EXPECT_EQ(request.notification.message, 10009U);
}

TEST_F(Request, SearchExpectsNoAnswer) {
  const auto request = Read(Search());
  EXPECT_EQ(request.kind, RequestKind::Search);
  EXPECT_EQ(request.patientId, u"19450101-1234");
  EXPECT_FALSE(request.ExpectsAnswer());
}

TEST_F(Request, NegativeKeyIsRead) {
  EXPECT_EQ(Read(Replaced(NewCase(), "<WParam>4711", "<WParam>-32001")).notification.wParam,
            -32001);
}

TEST_F(Request, EmptyUserDefDataIsRead) {
  EXPECT_EQ(Read(Replaced(NewCase(), "4711&amp;12&amp;3", "")).userDefData, u"");
}

TEST_F(Request, MissingRequestFileIsReportedAsMissing) {
  try {
    simulator::ReadRequest(files_, documents_, u"/nowhere/InNewCase1.xml");
    FAIL() << "a missing file was read";
  } catch (const simulator::Problem& problem) {
    EXPECT_THAT(problem.what(), HasSubstr("Filen finns inte"));
    EXPECT_THAT(problem.what(), HasSubstr("/nowhere/InNewCase1.xml"));
  }
}

TEST_F(Request, EachDefectOfARequestIsNamed) {
  EXPECT_THAT(ProblemOf(""), HasSubstr("tom"));
  EXPECT_THAT(ProblemOf("Hej"), HasSubstr("inte giltig XML"));
  EXPECT_THAT(ProblemOf(NewCase().substr(0, 200)), HasSubstr("inte giltig XML"));
  EXPECT_THAT(ProblemOf("<Letter><NewCase/></Letter>"), HasSubstr("Envelope saknas"));
  EXPECT_THAT(ProblemOf(Envelope("<OldCase/>")), HasSubstr("varken NewCase"));
  for (const std::string element : {"ResultPath", "ClassName", "MessageId", "WParam"}) {
    const auto opened = Replaced(NewCase(), "<" + element + ">", "<Other>");
    const auto renamed = Replaced(opened, "</" + element + ">", "</Other>");
    EXPECT_THAT(ProblemOf(renamed), HasSubstr(element + " saknas"));
  }
  EXPECT_THAT(ProblemOf(Replaced(NewCase(), "KestraToVilnor", "")), HasSubstr("ClassName är tomt"));
  EXPECT_THAT(ProblemOf(Replaced(NewCase(), "C:\\X\\", "X\\")), HasSubstr("fullständig sökväg"));
}

TEST_F(Request, NumbersOutsideTheirRangeAreNamed) {
  for (const std::string number : {"tio", "", "-", "1 0", "10002.5", "16", "70000", "1e4"}) {
    EXPECT_THAT(ProblemOf(Replaced(NewCase(), "<MessageId>10002", "<MessageId>" + number)),
                HasSubstr("MessageId"));
  }
  for (const std::string number : {"2147483648", "-2147483649", "0x10", "99999999999999999999"}) {
    EXPECT_THAT(ProblemOf(Replaced(NewCase(), "<WParam>4711", "<WParam>" + number)),
                HasSubstr("WParam"));
  }
}

TEST_F(Request, ExternalEntityDoesNotReadAFile) {
  const auto bytes =
      "<!DOCTYPE Envelope [<!ENTITY file SYSTEM '/etc/hostname'>]>" +
      Replaced(NewCase().substr(NewCase().find("<Envelope")), "4711&amp;12&amp;3", "[&file;]");
  try {
    EXPECT_THAT(Read(bytes).userDefData, testing::AnyOf(u"[]", u"[&file;]"));
  } catch (const simulator::Problem&) {
    SUCCEED();  // refusing the document is as good
  }
}

}  // namespace
