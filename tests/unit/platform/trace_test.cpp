#include "platform/trace.h"

#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "fakes/ports_fixture.h"

namespace platform {
namespace {

constexpr Procedure kOuter = u" in OpenWithNewCase";
constexpr Procedure kInner = u" in WriteNewCase";

class TraceTest : public fakes::PortsFixture {};

// The names of all enumerators but None, as far as each has one of its own.
template <class Word>
std::set<std::string> NamesFrom(Word first, Word last) {
  std::set<std::string> names;
  for (int word = static_cast<int>(first); word <= static_cast<int>(last); ++word) {
    names.insert(NameOf(static_cast<Word>(word)));
  }
  return names;
}

TEST_F(TraceTest, EveryWordHasANameOfItsOwn) {
  EXPECT_EQ(NamesFrom(TracedFile::None, TracedFile::ExistCase).size(), 4U);
  EXPECT_EQ(NamesFrom(Ending::Done, Ending::Renamed).size(), 11U);
  EXPECT_EQ(NamesFrom(Reason::None, Reason::SinkFailed).size(), 23U);
  EXPECT_STREQ(NameOf(static_cast<Reason>(200)), "");
}

TEST_F(TraceTest, ProcedureIsShownByItsLastWord) {
  EXPECT_EQ(std::u16string(kOuter.name()), u"OpenWithNewCase");
  EXPECT_EQ(std::u16string(Procedure(u" frmPreDefPrice: RoundOffAmount").name()),
            u"RoundOffAmount");
  const Procedure misnamed = u" in OpenExistCase\0OpenExistFHP";
  EXPECT_EQ(std::u16string(misnamed.name()), u"OpenExistFHP");
  EXPECT_EQ(misnamed.inBox(), u" in OpenExistCase");
}

TEST_F(TraceTest, NothingIsDoneWhileNobodyListens) {
  Traced(kOuter).End(Ending::Failed);
  Note(kOuter, Reason::NoWindow);
  EXPECT_TRUE(trace.lines.empty());
  EXPECT_EQ(trace.now, 0) << "the clock was read";
}

TEST_F(TraceTest, LineHasItsDurationAndDepth) {
  trace.TurnOn();
  Traced outer(kOuter);
  Traced inner(kInner);
  inner.End(Ending::Failed, Reason::None, 70);
  Note(kInner, Reason::NoWindow);
  outer.End(Ending::Done);
  ASSERT_EQ(trace.lines.size(), 3U);
  const std::vector<int> depths = {trace.lines[0].depth, trace.lines[1].depth,
                                   trace.lines[2].depth};
  EXPECT_EQ(depths, (std::vector{1, 1, 0}));
  EXPECT_EQ(fakes::Trace::TextOf(trace.lines[0]), "WriteNewCase Failed 70");
  EXPECT_EQ(fakes::Trace::TextOf(trace.lines[1]), "WriteNewCase Noted NoWindow");
  EXPECT_EQ(fakes::Trace::TextOf(trace.lines[2]), "OpenWithNewCase Done");
  EXPECT_EQ(trace.lines[0].microseconds, 100U);
  EXPECT_EQ(trace.lines[2].microseconds, 500U);
  Traced(kOuter).End(Ending::Done);
  EXPECT_EQ(trace.lines.back().depth, 0);
}

TEST_F(TraceTest, FilesLineAddsNoDepth) {
  trace.TurnOn();
  Traced first(kOuter);
  Traced file(kInner, TracedFile::NewCase);
  first.End(Ending::Done);
  Traced second(kOuter);
  Note(kInner, Reason::NoWindow);
  second.End(Ending::Done);
  file.End(Ending::Deleted, Reason::Entered);
  ASSERT_EQ(trace.lines.size(), 4U);
  EXPECT_EQ(trace.lines[0].depth, 0);
  EXPECT_EQ(trace.lines[1].depth, 1);
  EXPECT_EQ(trace.lines[2].depth, 0);
  EXPECT_EQ(trace.lines[3].depth, 1);
  EXPECT_EQ(fakes::Trace::TextOf(trace.lines[3]), "WriteNewCase NewCase Deleted Entered");
  Traced(kOuter).End(Ending::Done);
  EXPECT_EQ(trace.lines.back().depth, 0);
}

TEST_F(TraceTest, CallThatBeganBeforeTheSessionHasNoLine) {
  Traced before(kOuter);
  trace.TurnOn();
  before.End(Ending::Done);
  Traced during(kOuter);
  trace.TurnOff();
  during.End(Ending::Done);
  EXPECT_EQ(trace.lines.size(), 1U);
}

TEST_F(TraceTest, QuietCallHasALineOnlyWhenItFails) {
  trace.TurnOn();
  Traced(kOuter.TracedIfItFails()).End(Ending::Done);
  Traced(kOuter.TracedIfItFails()).End(Ending::Empty);
  EXPECT_TRUE(trace.lines.empty());
  Traced(kOuter.TracedIfItFails()).End(Ending::Failed, Reason::None, 7);
  EXPECT_EQ(trace.lines.size(), 1U);
  EXPECT_EQ(trace.lines.back().depth, 0);
}

TEST_F(TraceTest, ClockThatGoesBackGivesNoNegativeDuration) {
  trace.TurnOn();
  trace.now = -5'000;
  Traced first(kOuter);
  trace.now = -10'000;
  first.End(Ending::Done);
  Traced second(kOuter);
  trace.now += std::int64_t{1} << 40;
  second.End(Ending::Done);
  EXPECT_EQ(trace.lines.at(0).microseconds, 0U);
  EXPECT_EQ(trace.lines.at(1).microseconds, 0xFFFFFFFF);
}

TEST_F(TraceTest, LevelSaysWhatMatters) {
  const auto level = [](Ending ending, std::uint8_t depth) {
    return LevelOf({.procedure = kOuter, .ending = ending, .depth = depth});
  };
  for (const Ending ending : {Ending::Failed, Ending::Unshown, Ending::Raised}) {
    EXPECT_EQ(level(ending, 3), TraceLevel::Error);
  }
  for (const Ending ending :
       {Ending::Noted, Ending::Kept, Ending::LeftToNewer, Ending::SetAside, Ending::Renamed}) {
    EXPECT_EQ(level(ending, 3), TraceLevel::Warning);
  }
  EXPECT_EQ(level(Ending::Deleted, 1), TraceLevel::Information);
  EXPECT_EQ(level(Ending::Done, 0), TraceLevel::Information);
  EXPECT_EQ(level(Ending::Empty, 0), TraceLevel::Information);
  EXPECT_EQ(level(Ending::Done, 1), TraceLevel::Verbose);
  EXPECT_EQ(level(Ending::Empty, 1), TraceLevel::Verbose);
}

}  // namespace
}  // namespace platform
