#include "simulator/core/unattended.h"

#include "unit/simulator/fixture.h"

namespace {

using simulator::CommandLine;
using simulator::ExitCode;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class Unattended : public simulator_test::Fixture {
 protected:
  ExitCode Run(const CommandLine& commandLine, std::u16string_view plan) {
    simulator::Unattended run{files_, documents_, surroundings_, {46000.5}};
    return run.Run(commandLine, u"Link.exe path=...", simulator::ParsePlan(plan));
  }
  ExitCode RunOn(const std::string& request, std::u16string_view plan, bool removeFiles = true) {
    CommandLine commandLine;
    commandLine.requestPath = File(request);
    commandLine.removeFiles = removeFiles;
    return Run(commandLine, plan);
  }
};

TEST_F(Unattended, ResultIsWrittenThenTheRequestRemovedThenTheHostNotified) {
  EXPECT_EQ(RunOn(NewCase(), u"outcome=sent;caseid=26-9;user=anna"), ExitCode::Done);
  EXPECT_THAT(files_.steps, ElementsAre(u"write C:\\X\\Out4711.xml", u"delete request", u"post"));
  EXPECT_THAT(files_.written[u"C:\\X\\Out4711.xml"],
              HasSubstr("<Status>5</Status>\r\n<Id>26-9</Id>\r\n<UserName>anna</UserName>\r\n"
                        "<UserDefData>4711&amp;12&amp;3</UserDefData>"));
  ASSERT_EQ(surroundings_.posted.size(), 1U);
  EXPECT_EQ(surroundings_.posted[0].className, u"KestraToVilnor");
  EXPECT_EQ(surroundings_.posted[0].message, 10002U);
  EXPECT_EQ(surroundings_.posted[0].wParam, 4711);
  EXPECT_FALSE(FileIsThere());
}

TEST_F(Unattended, RequestStaysUnlessItsRemovalIsPlanned) {
  EXPECT_EQ(RunOn(NewCase(), u"outcome=sent", false), ExitCode::Done);
  EXPECT_TRUE(FileIsThere());
}

TEST_F(Unattended, RunWithoutARequestEndsSilently) {
  EXPECT_EQ(Run({}, u"outcome=sent"), ExitCode::Done);
  EXPECT_THAT(files_.steps, IsEmpty());
}

TEST_F(Unattended, SearchIsAcceptedWithoutAnAnswer) {
  EXPECT_EQ(RunOn(Search(), u"outcome=sent"), ExitCode::Done);
  EXPECT_THAT(files_.steps, ElementsAre(u"delete request"));
}

TEST_F(Unattended, OutcomeNoneEndsWithoutResultAndMessage) {
  EXPECT_EQ(RunOn(NewCase(), u"outcome=none"), ExitCode::Done);
  EXPECT_THAT(files_.steps, ElementsAre(u"delete request"));
}

TEST_F(Unattended, UnreadableResultIsAnnouncedLikeAnyOther) {
  EXPECT_EQ(RunOn(NewCase(), u"outcome=unreadable"), ExitCode::Done);
  EXPECT_EQ(surroundings_.posted.size(), 1U);
}

TEST_F(Unattended, HostWindowIsWaitedFor) {
  surroundings_.attemptsWithoutWindow = 3;
  EXPECT_EQ(RunOn(NewCase(), u"outcome=sent;wait=1000"), ExitCode::Done);
  EXPECT_EQ(surroundings_.posted.size(), 1U);
}

TEST_F(Unattended, MissingHostWindowEndsTheWaitAndLeavesTheResult) {
  surroundings_.attemptsWithoutWindow = 1000;
  EXPECT_EQ(RunOn(NewCase(), u"outcome=sent;wait=1000"), ExitCode::NoHost);
  EXPECT_EQ(surroundings_.paused, std::chrono::milliseconds(1000));
  EXPECT_THAT(surroundings_.log, HasSubstr("KestraToVilnor"));
  EXPECT_THAT(files_.steps, ElementsAre(u"write C:\\X\\Out4711.xml", u"delete request"));
}

TEST_F(Unattended, ResultThatCannotBeWrittenIsReportedAndNothingElseHappens) {
  files_.refused = u"C:\\X\\";
  EXPECT_EQ(RunOn(NewCase(), u"outcome=sent"), ExitCode::FileFailure);
  EXPECT_THAT(surroundings_.log, HasSubstr("Resultatfilen kan inte skrivas. C:\\X\\Out4711.xml"));
  EXPECT_THAT(surroundings_.posted, IsEmpty());
  EXPECT_TRUE(FileIsThere());
}

TEST_F(Unattended, UnremovableRequestIsReportedAfterTheHostIsNotified) {
  files_.keepsRequest = true;
  EXPECT_EQ(RunOn(NewCase(), u"outcome=sent"), ExitCode::FileFailure);
  EXPECT_THAT(surroundings_.log, HasSubstr("Begäransfilen kan inte tas bort."));
  EXPECT_EQ(surroundings_.posted.size(), 1U);
}

TEST_F(Unattended, CaseIdThatXmlForbidsWritesNothing) {
  EXPECT_EQ(RunOn(NewCase(), u"caseid=a\u0001"), ExitCode::FileFailure);
  EXPECT_THAT(surroundings_.log, HasSubstr("Id innehåller"));
  EXPECT_THAT(files_.steps, IsEmpty());
}

TEST_F(Unattended, UnreadableRequestIsReportedAndStays) {
  EXPECT_EQ(RunOn("Hej", u"outcome=sent"), ExitCode::UnreadableRequest);
  EXPECT_THAT(surroundings_.log, HasSubstr("inte giltig XML"));
  EXPECT_TRUE(FileIsThere());
  EXPECT_THAT(files_.steps, IsEmpty());
}

TEST_F(Unattended, BadPlanOrCommandLineIsReportedBeforeAnythingIsDone) {
  EXPECT_EQ(RunOn(NewCase(), u"outcome=skickat"), ExitCode::BadCall);
  EXPECT_THAT(surroundings_.log, HasSubstr("outcome=skickat"));
  CommandLine commandLine;
  commandLine.requestPath = File(NewCase());
  commandLine.problems = {u"version=3"};
  EXPECT_EQ(Run(commandLine, u""), ExitCode::BadCall);
  EXPECT_THAT(surroundings_.log, HasSubstr("version=3"));
  EXPECT_THAT(files_.steps, IsEmpty());
}

TEST_F(Unattended, OutcomeUnfitForTheRequestIsABadPlan) {
  EXPECT_EQ(RunOn(NewCase(), u"outcome=deleted"), ExitCode::BadCall);
  EXPECT_THAT(files_.steps, IsEmpty());
  EXPECT_EQ(RunOn(ExistingCase(), u"outcome=deleted"), ExitCode::Done);
  EXPECT_THAT(files_.written[u"C:\\X\\Out55.xml"], HasSubstr("<Cancelled>3</Cancelled>"));
}

TEST_F(Unattended, CopiesAreKeptBeforeTheHostIsNotified) {
  const auto path = File(NewCase());
  EXPECT_EQ(RunOn(NewCase(), u"outcome=sent;keep=C:\\Kept"), ExitCode::Done);
  EXPECT_THAT(files_.folders, ElementsAre(u"C:\\Kept"));
  EXPECT_THAT(files_.steps, testing::Contains(u"write C:\\Kept\\Out4711.xml"));
  EXPECT_EQ(files_.written[u"C:\\Kept\\Out4711.xml"], files_.written[u"C:\\X\\Out4711.xml"]);
  EXPECT_EQ(files_.steps.back(), u"post");
  ASSERT_EQ(surroundings_.copied.size(), 1U);
  EXPECT_EQ(surroundings_.copied[0].first, path);
}

TEST_F(Unattended, CommandLineIsKept) {
  EXPECT_EQ(Run({}, u"keep=C:\\Kept"), ExitCode::Done);
  EXPECT_EQ(files_.written[u"C:\\Kept\\commandline.txt"], "Link.exe path=...\r\n");
}

TEST_F(Unattended, CopiesThatCannotBeWrittenAreReported) {
  files_.refused = u"C:\\Kept";
  EXPECT_EQ(RunOn(NewCase(), u"keep=C:\\Kept"), ExitCode::FileFailure);
  EXPECT_THAT(surroundings_.log, HasSubstr("C:\\Kept"));
  EXPECT_TRUE(FileIsThere());
}

TEST_F(Unattended, LogNamesTheStationsButNotThePatient) {
  EXPECT_EQ(RunOn(NewCase(), u"outcome=sent"), ExitCode::Done);
  EXPECT_THAT(surroundings_.log, HasSubstr("Kommandorad: Link.exe path=...\n"));
  EXPECT_THAT(surroundings_.log, HasSubstr("Begäran: Nytt ärende\n"));
  EXPECT_THAT(surroundings_.log, HasSubstr("Meddelande 10002 med nyckel 4711"));
  EXPECT_THAT(surroundings_.log, Not(HasSubstr("Öberg")));
}

}  // namespace
