#include "simulator/core/answer.h"

#include <gmock/gmock.h>

#include "automation/date.h"
#include "simulator/core/problem.h"

namespace {

using simulator::Outcome;
using simulator::RequestKind;
using testing::HasSubstr;
using testing::Not;

simulator::Request RequestOf(RequestKind kind) {
  simulator::Request request;
  request.kind = kind;
  request.resultPath = u"C:\\X\\Out1.xml";
  request.userDefData = u"4711&12&3";
  return request;
}

simulator::Answer AnswerOf(Outcome outcome, const std::u16string& caseId) {
  simulator::Answer answer;
  answer.outcome = outcome;
  answer.caseId = caseId;
  answer.userName = u"anna";
  return answer;
}

std::string Bytes(RequestKind kind, Outcome outcome) {
  return ResultFileBytes(RequestOf(kind), AnswerOf(outcome, u"26-1"));
}

TEST(ResultFile, SentNewCaseHasEveryElementTheComponentReads) {
  EXPECT_EQ(Bytes(RequestKind::NewCase, Outcome::Sent),
            "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n"
            "<Envelope LIFFVersion=\"2.0\">\r\n<CaseResult>\r\n"
            "<Cancelled>0</Cancelled>\r\n<Status>5</Status>\r\n<Id>26-1</Id>\r\n"
            "<UserName>anna</UserName>\r\n<UserDefData>4711&amp;12&amp;3</UserDefData>\r\n"
            "</CaseResult>\r\n</Envelope>\r\n");
}

struct Cell {
  RequestKind kind;
  Outcome outcome;
  // nullptr: the element is missing.
  const char* cancelled;
  const char* status;
};

class OutcomeTable : public testing::TestWithParam<Cell> {};

TEST_P(OutcomeTable, OutcomeWritesItsStatusCodes) {
  const auto bytes = Bytes(GetParam().kind, GetParam().outcome);
  const auto* const cancelled = GetParam().cancelled;
  if (cancelled == nullptr) {
    EXPECT_THAT(bytes, Not(HasSubstr("Cancelled")));
  } else {
    EXPECT_THAT(bytes, HasSubstr("<Cancelled>" + std::string(cancelled) + "</Cancelled>"));
  }
  EXPECT_THAT(bytes, HasSubstr("<Status>" + std::string(GetParam().status) + "</Status>"));
}

INSTANTIATE_TEST_SUITE_P(
    ResultFile, OutcomeTable,
    testing::Values(Cell{RequestKind::NewCase, Outcome::Sent, "0", "5"},
                    Cell{RequestKind::NewCase, Outcome::Changed, "0", "1"},
                    Cell{RequestKind::NewCase, Outcome::Withdrawn, "0", "7"},
                    Cell{RequestKind::NewCase, Outcome::Cancelled, "1", "0"},
                    Cell{RequestKind::PriorApproval, Outcome::Sent, "0", "5"},
                    Cell{RequestKind::PriorApproval, Outcome::Changed, "0", "1"},
                    Cell{RequestKind::PriorApproval, Outcome::Withdrawn, "0", "7"},
                    Cell{RequestKind::PriorApproval, Outcome::Cancelled, "1", "0"},
                    Cell{RequestKind::ExistingCase, Outcome::Sent, nullptr, "5"},
                    Cell{RequestKind::ExistingCase, Outcome::Changed, nullptr, "1"},
                    Cell{RequestKind::ExistingCase, Outcome::Withdrawn, nullptr, "7"},
                    Cell{RequestKind::ExistingCase, Outcome::Cancelled, "1", "0"},
                    Cell{RequestKind::ExistingCase, Outcome::Deleted, "3", "0"}));

TEST(ResultFile, UnreadableResultEndsBeforeItsElementsAreClosed) {
  const auto bytes = Bytes(RequestKind::NewCase, Outcome::Unreadable);
  EXPECT_THAT(bytes, HasSubstr("<CaseResult>"));
  EXPECT_THAT(bytes, Not(HasSubstr("</CaseResult>")));
}

TEST(ResultFile, StatusCodesMayBeReplacedOrLeftOut) {
  auto answer = AnswerOf(Outcome::Sent, u"1");
  answer.cancelled = u"";
  answer.status = u"fem<5";
  const auto bytes = ResultFileBytes(RequestOf(RequestKind::NewCase), answer);
  EXPECT_THAT(bytes, Not(HasSubstr("Cancelled")));
  EXPECT_THAT(bytes, HasSubstr("<Status>fem&lt;5</Status>"));
}

TEST(ResultFile, SwedishLettersAreBytesAndOtherLettersReferences) {
  auto request = RequestOf(RequestKind::NewCase);
  request.userDefData = u"1&2&3&4&<\u00C5\u00F6>\r\n\u0141\U0001F9B7\u0080";
  const auto bytes = ResultFileBytes(request, AnswerOf(Outcome::Sent, u"1"));
  EXPECT_THAT(bytes, HasSubstr("<UserDefData>1&amp;2&amp;3&amp;4&amp;&lt;\xC5\xF6&gt;&#13;\n"
                               "&#321;&#129463;&#128;</UserDefData>"));
}

TEST(ResultFile, CharactersThatXmlForbidsAreRefused) {
  for (const std::u16string text : {u"a\u0001", u"\xD800", u"\xDC00\xD800", u"\xFFFF"}) {
    EXPECT_THROW(ResultFileBytes(RequestOf(RequestKind::NewCase), AnswerOf(Outcome::Sent, text)),
                 simulator::Problem);
  }
}

TEST(Outcomes, DeletedIsForExistingCasesOnlyAndSearchHasNoOutcome) {
  EXPECT_TRUE(IsPossible(Outcome::Deleted, RequestKind::ExistingCase));
  EXPECT_FALSE(IsPossible(Outcome::Deleted, RequestKind::NewCase));
  EXPECT_FALSE(IsPossible(Outcome::Deleted, RequestKind::PriorApproval));
  EXPECT_FALSE(IsPossible(Outcome::Sent, RequestKind::Search));
  EXPECT_TRUE(IsPossible(Outcome::None, RequestKind::Search));
}

TEST(Outcomes, EveryOutcomeHasItsWord) {
  EXPECT_EQ(simulator::OutcomeOfWord(u"sent"), Outcome::Sent);
  EXPECT_EQ(simulator::OutcomeOfWord(u"Changed"), Outcome::Changed);
  EXPECT_EQ(simulator::OutcomeOfWord(u"withdrawn"), Outcome::Withdrawn);
  EXPECT_EQ(simulator::OutcomeOfWord(u"cancelled"), Outcome::Cancelled);
  EXPECT_EQ(simulator::OutcomeOfWord(u"deleted"), Outcome::Deleted);
  EXPECT_EQ(simulator::OutcomeOfWord(u"unreadable"), Outcome::Unreadable);
  EXPECT_EQ(simulator::OutcomeOfWord(u"none"), Outcome::None);
  EXPECT_EQ(simulator::OutcomeOfWord(u"skickat"), std::nullopt);
}

TEST(Defaults, CaseIdIsTheRequestsOrIsMadeFromTheTime) {
  const auto now = automation::MakeDate({2026, 11, 6, 14, 5, 9});
  auto request = RequestOf(RequestKind::NewCase);
  EXPECT_EQ(DefaultCaseId(request, now), u"261106140509");
  request.caseId = u"26-100";
  EXPECT_EQ(DefaultCaseId(request, now), u"26-100");
}

TEST(Defaults, UserIsTheParticipantOrTheSimulator) {
  auto request = RequestOf(RequestKind::PriorApproval);
  EXPECT_EQ(DefaultUserName(request), u"simulator");
  request.participant = u"annab";
  EXPECT_EQ(DefaultUserName(request), u"annab");
}

}  // namespace
