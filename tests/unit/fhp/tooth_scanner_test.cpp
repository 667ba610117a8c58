#include "fhp/tooth_scanner.h"

#include <gmock/gmock.h>

#include "fakes/printing.h"

namespace fhp {
namespace {

using automation::RuntimeError;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using Runs = std::vector<std::pair<std::string, std::string>>;

Runs RunsOf(std::u16string_view column, ScanRules rules = kDocumentScan) {
  Runs runs;
  ToothScanner teeth(column, rules);
  while (const auto run = teeth.Next()) {
    runs.emplace_back(automation::ToUtf8(run->tooth), automation::ToUtf8(run->text));
  }
  return runs;
}

TEST(ToothScanner, ScannerGivesToothAndTextOfEachRunInOrder) {
  EXPECT_THAT(RunsOf(u"<11>Krona</11><12>Extr, åter</12>"),
              ElementsAre(Pair("11", "Krona"), Pair("12", "Extr, åter")));
}

TEST(ToothScanner, ScannerSkipsTextBetweenRuns) {
  EXPECT_THAT(RunsOf(u"före <11>a</11>, mellan > / <12>b</12> efter"),
              ElementsAre(Pair("11", "a"), Pair("12", "b")));
  EXPECT_THAT(RunsOf(u""), IsEmpty());
  EXPECT_THAT(RunsOf(u"ingen tand"), IsEmpty());
}

TEST(ToothScanner, RunWithAnEmptyTextIsGiven) {
  EXPECT_THAT(RunsOf(u"<11></11><12>b</12>"), ElementsAre(Pair("11", ""), Pair("12", "b")));
}

TEST(ToothScanner, AnyClosingTagEndsAText) {
  EXPECT_THAT(RunsOf(u"<11>a</12>"), ElementsAre(Pair("11", "a")));
  EXPECT_THAT(RunsOf(u"<11>a</"), ElementsAre(Pair("11", "a")));
}

TEST(ToothScanner, DoublyClosedTagIsOneRun) {
  EXPECT_THAT(RunsOf(u"<11>a</11></11><12>b</12>"), ElementsAre(Pair("11", "a"), Pair("12", "b")));
}

TEST(ToothScanner, UnclosedTextIsGivenToItsEndAndEndsTheScan) {
  EXPECT_THAT(RunsOf(u"<11>a</11><12>b <13>c"),
              ElementsAre(Pair("11", "a"), Pair("12", "b <13>c")));
  EXPECT_THAT(RunsOf(u"<11>"), ElementsAre(Pair("11", "")));
}

TEST(ToothScanner, RunInsideATextIsFoundToo) {
  EXPECT_THAT(RunsOf(u"<11>a<12>b</12>c</11>"), ElementsAre(Pair("11", "a<12>b"), Pair("12", "b")));
}

TEST(ToothScanner, TagAtTheStartOfATextIsOnlyPartOfTheText) {
  EXPECT_THAT(RunsOf(u"<11><12>b</12><13>c</13>"),
              ElementsAre(Pair("11", "<12>b"), Pair("13", "c")));
}

TEST(ToothScanner, TagReachesFromALessThanSignToTheNextGreaterThanSign) {
  EXPECT_THAT(RunsOf(u"a < b <11>c</11>"), ElementsAre(Pair(" b <11", "c")));
  EXPECT_THAT(RunsOf(u"<>x</>"), ElementsAre(Pair("", "x")));
}

TEST(ToothScanner, LessThanSignWithoutAGreaterThanSignIsNotATag) {
  EXPECT_THAT(RunsOf(u"<11>a</11> 2 < 3"), ElementsAre(Pair("11", "a")));
  EXPECT_THAT(RunsOf(u"<11"), IsEmpty());
}

TEST(ToothScanner, DocumentScanIncludesTheLastPosition) {
  EXPECT_THAT(RunsOf(u"<"), IsEmpty());
  EXPECT_THAT(RunsOf(u"ab<"), IsEmpty());
  // A scan limited to the last position reports when it goes beyond.
  const std::u16string column(100, u'x');
  EXPECT_EQ(fakes::ErrorNumberOf([&] { RunsOf(column, {true, 100, false}); }), 6);
  EXPECT_EQ(fakes::ErrorNumberOf([&] { RunsOf(column, {false, 100, false}); }), 0);
}

TEST(ToothScanner, TagMayBeginAtTheLastScannedPosition) {
  ScanRules rules = kDocumentScan;
  rules.scansLastPosition = false;
  EXPECT_THAT(RunsOf(u"<11>a</11><>", rules), ElementsAre(Pair("11", "a"), Pair("", "")));
}

TEST(ToothScanner, SendCheckRefusesAnUnclosedRun) {
  for (const auto* column : {u"<11>a", u"<11>", u"<11", u"a < b", u"<11>a</11><>"}) {
    EXPECT_EQ(fakes::ErrorNumberOf([&] { RunsOf(column, kSendCheckScan); }), 5);
    EXPECT_EQ(fakes::ErrorNumberOf([&] { RunsOf(column); }), 0);
  }
}

TEST(ToothScanner, RunBeforeARefusedOneIsGiven) {
  ToothScanner teeth(u"<11>a</11><12>b", kSendCheckScan);
  EXPECT_EQ(teeth.Next()->text, u"a");
  EXPECT_EQ(fakes::ErrorNumberOf([&] { teeth.Next(); }), 5);
}

TEST(ToothScanner, UnclosedTagInsideATextIsARunUpToTheNextClosingTag) {
  EXPECT_THAT(RunsOf(u"<11>a <12>b</11><13>c</13>"),
              ElementsAre(Pair("11", "a <12>b"), Pair("12", "b"), Pair("13", "c")));
  EXPECT_THAT(RunsOf(u"<11>a <12 b</11> c"),
              ElementsAre(Pair("11", "a <12 b"), Pair("12 b</11", " c")));
}

TEST(ToothScanner, TextsAndTeethKeepTheirBlanks) {
  EXPECT_THAT(RunsOf(u"< 11 > a </11><12>\tb\r\n</12>"),
              ElementsAre(Pair(" 11 ", " a "), Pair("12", "\tb\r\n")));
}

TEST(ToothScanner, DocumentScanReadsColumnsLongerThanSixteenBits) {
  const std::u16string before(40000, u'x');
  EXPECT_THAT(RunsOf(before + u"<11>a</11>"), ElementsAre(Pair("11", "a")));
}

TEST(ToothScanner, SixteenBitPositionsEndAt32767) {
  EXPECT_THAT(RunsOf(std::u16string(32767, u'x'), kSendCheckScan), IsEmpty());
  EXPECT_EQ(fakes::ErrorNumberOf([] { RunsOf(std::u16string(32768, u'x'), kSendCheckScan); }), 6);
}

TEST(ToothScanner, TagBeyondSixteenBitsRaisesOverflowBeforeItsTextIsGiven) {
  const std::u16string tooth(32764, u'1');
  const auto error = [&](const std::u16string& column) {
    return fakes::ErrorNumberOf([&] { ToothScanner(column, kSendCheckScan).Next(); });
  };
  EXPECT_EQ(error(u"<" + tooth + u">a</"), 0);
  EXPECT_EQ(error(u"<1" + tooth + u">a</"), 6);
  EXPECT_EQ(error(u"<1" + tooth + u">a"), 6);
}

TEST(ToothScanner, RunBeforeTheOverflowIsGiven) {
  const std::u16string column = u"<11>a</11>" + std::u16string(40000, u'x');
  ToothScanner teeth(column, kSendCheckScan);
  EXPECT_EQ(teeth.Next()->text, u"a");
  EXPECT_EQ(fakes::ErrorNumberOf([&] { teeth.Next(); }), 6);
}

TEST(ToothScanner, UnclosedTextEndsTheScanBeforeTheOverflow) {
  const std::u16string column = u"<11>" + std::u16string(40000, u'x');
  ScanRules rules = kSendCheckScan;
  EXPECT_EQ(fakes::ErrorNumberOf([&] { RunsOf(column, rules); }), 5);
  rules.refusesOpenRuns = false;
  EXPECT_EQ(RunsOf(column, rules).size(), 1U);
}

TEST(ToothScanner, ScannerStaysAtItsEnd) {
  ToothScanner teeth(u"<11>a</11>", kDocumentScan);
  EXPECT_TRUE(teeth.Next());
  EXPECT_FALSE(teeth.Next());
  EXPECT_FALSE(teeth.Next());
}

}  // namespace
}  // namespace fhp
