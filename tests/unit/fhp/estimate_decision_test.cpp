#include "fhp/estimate_decision.h"

#include "automation/date.h"
#include "unit/fhp/fixture.h"

namespace fhp {
namespace {

using automation::MakeDate;

class EstimateDecision : public FhpFixture {
 protected:
  static bool Includes(const automation::DateParts& registered, int birthYear) {
    return IncludesEstimate(MakeDate(registered),
                            MakeDate({.year = birthYear, .month = 12, .day = 31}));
  }
};

TEST_F(EstimateDecision, EstimateStartsOnTheSecondOfJanuaryOfTheYearOfSixtyFive) {
  EXPECT_FALSE(Includes({.year = 2006, .month = 12, .day = 31}, 1942));
  EXPECT_FALSE(Includes({.year = 2007, .month = 1, .day = 1}, 1942));
  EXPECT_TRUE(Includes({.year = 2007, .month = 1, .day = 2}, 1942));
  EXPECT_TRUE(Includes({.year = 2026, .month = 11, .day = 16}, 1942));
}

TEST_F(EstimateDecision, EstimateIgnoresTheTimeOfDay) {
  EXPECT_FALSE(
      Includes({.year = 2007, .month = 1, .day = 1, .hour = 23, .minute = 59, .second = 59}, 1942));
}

TEST_F(EstimateDecision, EstimateDependsOnTheYearOfBirthOnly) {
  EXPECT_EQ(IncludesEstimate(MakeDate({.year = 2007, .month = 1, .day = 2}),
                             MakeDate({.year = 1942, .month = 1, .day = 1})),
            IncludesEstimate(MakeDate({.year = 2007, .month = 1, .day = 2}),
                             MakeDate({.year = 1942, .month = 12, .day = 31})));
  EXPECT_FALSE(Includes({.year = 2007, .month = 1, .day = 2}, 1943));
}

TEST_F(EstimateDecision, EstimateIsTheSameInOtherLocalesFormats) {
  locale.shortDateAnswer = u"M/d/yyyy";
  locale.regional = {};
  util::CurrentSettings().gDateFormat = u"M/d/yyyy";
  EXPECT_FALSE(Includes({.year = 2007, .month = 1, .day = 1}, 1942));
  EXPECT_TRUE(Includes({.year = 2007, .month = 1, .day = 2}, 1942));
  util::CurrentSettings().gDateFormat = u"DD.MM.YYYY";
  locale.regional.shortDate = u"dd.MM.yyyy";
  EXPECT_FALSE(Includes({.year = 2007, .month = 1, .day = 1}, 1942));
  EXPECT_TRUE(Includes({.year = 2007, .month = 1, .day = 2}, 1942));
}

// A short date with a month's name, which numeric parts do not match.
TEST_F(EstimateDecision, EstimateGoesByTheRegistrationMonthUnderAFormatWithMonthNames) {
  for (const auto* picture : {u"dd-MMM-YYYY", u"d MMMM yyyy"}) {
    util::CurrentSettings().gDateFormat = picture;
    for (const int birthYear : {1942, 2000}) {
      EXPECT_TRUE(Includes({.year = 2026, .month = 1, .day = 16}, birthYear));
      EXPECT_TRUE(Includes({.year = 2026, .month = 2, .day = 12}, birthYear));
      EXPECT_FALSE(Includes({.year = 2026, .month = 1, .day = 31}, birthYear));
      EXPECT_FALSE(Includes({.year = 2026, .month = 2, .day = 13}, birthYear));
      for (int month = 3; month <= 12; ++month) {
        EXPECT_FALSE(Includes({.year = 2026, .month = month, .day = 1}, birthYear)) << month;
      }
    }
  }
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(EstimateDecision, DateFormatWithWeekdaysOrWordsGivesNoEstimateAndNoBox) {
  for (const auto* picture : {u"ddd yyyy-MM-dd", u"dddd, d MMMM yyyy", u"d.M.yyyy '\u0433.'"}) {
    util::CurrentSettings().gDateFormat = picture;
    for (int month = 1; month <= 12; ++month) {
      EXPECT_FALSE(Includes({.year = 2026, .month = month, .day = 1}, 1942)) << month;
    }
  }
  UseOlderPatient();
  AddEstimateRow();
  EXPECT_NE(Write(), u"");
  EXPECT_EQ(File().find("<FormDescrId>108696<"), std::string::npos);
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(EstimateDecision, EmptyDateFormatGivesNoEstimateAndNoBox) {
  util::CurrentSettings().gDateFormat = u"";
  UseOlderPatient();
  AddEstimateRow();
  EXPECT_NE(Write(), u"");
  EXPECT_EQ(File().find("<FormDescrId>108696<"), std::string::npos);
  EXPECT_NE(File().find("<UserId>anmeld</UserId>"), std::string::npos);
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(EstimateDecision, EstimateDecidesTheParticipantsCode) {
  EXPECT_EQ(ParticipantCode(false), -32000);
  EXPECT_EQ(ParticipantCode(true), -32001);
}

TEST_F(EstimateDecision, OlderPatientWithRowsSendsTheEstimate) {
  UseOlderPatient();
  AddEstimateRow();
  Write();
  EXPECT_NE(File().find("<FormDescrId>108696</FormDescrId>"), std::string::npos);
  EXPECT_NE(File().find("<Participant><UserId>kostnad</UserId></Participant></NewCase>"),
            std::string::npos);
}

TEST_F(EstimateDecision, EstimateIsNeitherReadNorSentOnTheBoundary) {
  UseOlderPatient();
  AddEstimateRow();
  application[u"RegDate"] = MakeDate({.year = 2007, .month = 1, .day = 1});
  Write();
  EXPECT_EQ(File().find("<FormDescrId>108696<"), std::string::npos);
  EXPECT_NE(File().find("<UserId>anmeld</UserId>"), std::string::npos);
  for (const auto& call : database.Log()) {
    EXPECT_EQ(call.find(u"SelectNoOf"), std::u16string::npos);
  }
}

TEST_F(EstimateDecision, AgeDoesNotMatterWithoutRows) {
  UseOlderPatient();
  Write();
  EXPECT_EQ(File().find("<FormDescrId>108696<"), std::string::npos);
  EXPECT_NE(File().find("<UserId>anmeld</UserId>"), std::string::npos);
}

TEST_F(EstimateDecision, RegistrationDateIsNotNeededWithoutRows) {
  application[u"RegDate"] = Null();
  EXPECT_NE(Write(), u"");
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(EstimateDecision, MissingRegistrationDateIsReportedWithRows) {
  AddEstimateRow();
  application[u"RegDate"] = Null();
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(Boxes(), std::vector<std::u16string>{u"94 Invalid use of Null in WriteNewFHP"});
}

}  // namespace
}  // namespace fhp
