// Form "108696": which rows are included, how they are numbered, counted and summed.
#include <algorithm>
#include <gmock/gmock.h>
#include <limits>

#include "automation/date.h"
#include "unit/fhp/fixture.h"

namespace fhp {
namespace {

using automation::Currency;
using automation::MakeDate;
using testing::ElementsAre;
using testing::Pair;
using Texts = std::vector<std::u16string>;

constexpr const char* kForm = "108696";
constexpr auto kLast32 = 2147483647;

class CostEstimate : public FhpFixture {
 protected:
  CostEstimate() { UseOlderPatient(); }

  // The form after its fixed fields.
  Fields RowFields() {
    Fields fields = FieldsOf(kForm).value_or(Fields());
    const auto first = std::find_if(fields.begin(), fields.end(), [](const auto& field) {
      return field.first.starts_with("edtBer");
    });
    return {first, fields.end()};
  }
  // Only the numbers that the sums are built from.
  std::string ValueOfRow(const std::string& key) {
    for (const auto& [name, value] : RowFields()) {
      if (name == key) {
        return value;
      }
    }
    return "not written";
  }
  // A skipped row beside an included one, so that the form is written.
  void ExpectNotTaken(const Row& changes) {
    estimateRows.clear();
    AddEstimateRow();
    AddEstimateRow(changes);
    const Fields fields = RowFields();
    EXPECT_EQ(fields.size(), 6U);
    EXPECT_EQ(ValueOfRow("edtBerSummering"), "1000,00");
  }
};

TEST_F(CostEstimate, EstimateStartsWithThePartiesAndTheNotes) {
  AddEstimateRow();
  application[u"Notes"] = u"Se bilaga";
  provider[u"levno"] = u"L1";
  const auto fields = FieldsOf(kForm);
  ASSERT_TRUE(fields);
  EXPECT_THAT(
      std::vector(fields->begin(), fields->begin() + 10),
      ElementsAre(Pair("edtArendeNr", "A1"), Pair("edtVardgivareNamn", "Kliniken"),
                  Pair("edtVardgivareAdress", "Storgatan 1"), Pair("edtVardgivarePostNr", "11122"),
                  Pair("edtVardgivarePostort", "Stockholm"), Pair("edtVardgivareOrgNr", "5566-1"),
                  Pair("edtVardgivareLeverantorNr", "L1"),
                  Pair("edtPatientPersonNr", "19420315-1234"), Pair("edtPatientNamn", "Anna Berg"),
                  Pair("memUpplysningar", "Se bilaga")));
}

TEST_F(CostEstimate, NullNotesAndProviderNumberAreLeftOut) {
  AddEstimateRow();
  const auto keys = Keys(kForm);
  EXPECT_EQ(std::count(keys.begin(), keys.end(), "memUpplysningar"), 0);
  EXPECT_EQ(std::count(keys.begin(), keys.end(), "edtVardgivareLeverantorNr"), 0);
}

TEST_F(CostEstimate, SecondAddressLineIsUsedOrAnEmptyOne) {
  AddEstimateRow();
  provider[u"adr1"] = Null();
  EXPECT_THAT((*FieldsOf(kForm))[2], Pair("edtVardgivareAdress", "Box 5"));
  provider[u"adr2"] = Null();
  EXPECT_THAT((*FieldsOf(kForm))[2], Pair("edtVardgivareAdress", ""));
}

TEST_F(CostEstimate, EstimateFollowsTheApplicationFormInTheSameContribution) {
  AddEstimateRow();
  Write();
  EXPECT_NE(File().find("</FormItem></FormDescr><FormDescr><FormDescrId>108696</FormDescrId>"),
            std::string::npos);
  EXPECT_NE(File().find("</FormDescr></Contribution><Participant>"), std::string::npos);
}

TEST_F(CostEstimate, OrdinaryRowHasMeasureCountPriceAndSum) {
  AddEstimateRow({{u"NoOf", 3}, {u"Amount", 1234.5}});
  EXPECT_THAT(
      RowFields(),
      ElementsAre(Pair("edtBer1Atgard", "321"), Pair("edtBer1Antal", "3"),
                  Pair("edtBer1Pris", "1234,50"), Pair("edtBer1Summa", "3703,50"),
                  Pair("edtBerSummering", "3703,50"), Pair("edtBerTotalErsattning", "-3996,50")));
}

TEST_F(CostEstimate, FixedRatesHaveTheirRowsAndPricesAndShowTheirOwnAmount) {
  AddEstimateRow({{u"RateNo", 682}, {u"NoOf", 2}, {u"Amount", 3000}});
  AddEstimateRow({{u"RateNo", u"681"}, {u"NoOf", 3}, {u"Amount", 2900}});
  EXPECT_THAT(
      RowFields(),
      ElementsAre(Pair("edtBer11Antal", "2"), Pair("edtBer11Pris", "3000,00"),
                  Pair("edtBer11Summa", "6400,00"), Pair("edtBer10Antal", "3"),
                  Pair("edtBer10Pris", "2900,00"), Pair("edtBer10Summa", "8700,00"),
                  Pair("edtBerSummering", "15100,00"), Pair("edtBerTotalErsattning", "7400,00")));
}

TEST_F(CostEstimate, FixedRatesDoNotTakeARowNumber) {
  AddEstimateRow({{u"RateNo", 401}});
  AddEstimateRow({{u"RateNo", 681}});
  AddEstimateRow({{u"RateNo", 402}});
  EXPECT_EQ(ValueOfRow("edtBer1Atgard"), "401");
  EXPECT_EQ(ValueOfRow("edtBer2Atgard"), "402");
  EXPECT_EQ(ValueOfRow("edtBer3Atgard"), "not written");
}

TEST_F(CostEstimate, TenthAndEleventhOrdinaryRowsShareKeysWithTheFixedRates) {
  AddEstimateRow({{u"RateNo", 681}});
  for (std::int32_t row = 1; row <= 12; ++row) {
    AddEstimateRow({{u"RateNo", 400 + row}});
  }
  AddEstimateRow({{u"RateNo", 682}});
  const auto keys = Keys(kForm);
  for (const auto* key : {"edtBer10Antal", "edtBer10Pris", "edtBer10Summa", "edtBer11Antal"}) {
    EXPECT_EQ(std::count(keys.begin(), keys.end(), key), 2) << key;
  }
  EXPECT_EQ(ValueOfRow("edtBer9Atgard"), "409");
  EXPECT_EQ(ValueOfRow("edtBer12Atgard"), "412");
}

TEST_F(CostEstimate, RowsTenAndElevenNeverCarryAMeasure) {
  for (std::int32_t row = 1; row <= 12; ++row) {
    AddEstimateRow({{u"RateNo", 400 + row}, {u"NoOf", row}});
  }
  EXPECT_EQ(ValueOfRow("edtBer10Antal"), "10");
  EXPECT_EQ(ValueOfRow("edtBer10Atgard"), "not written");
  EXPECT_EQ(ValueOfRow("edtBer11Antal"), "11");
  EXPECT_EQ(ValueOfRow("edtBer11Atgard"), "not written");
  EXPECT_EQ(ValueOfRow("edtBer12Atgard"), "412");
}

TEST_F(CostEstimate, RowCounterOverflowsBeyondSixteenBits) {
  for (std::int32_t row = 1; row <= 32766; ++row) {
    AddEstimateRow();
  }
  EXPECT_NE(Write(), u"");
  EXPECT_NE(File().find("edtBer32766Summa"), std::string::npos);
  AddEstimateRow();
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(Boxes(), Texts{u"6 Overflow in WriteNewFHP"});
}

TEST_F(CostEstimate, GroupedRowsMultiplyTheCount) {
  AddEstimateRow({{u"SelectNoOf", 2}, {u"NoOf", 3}});
  EXPECT_EQ(ValueOfRow("edtBer1Antal"), "6");
  EXPECT_EQ(ValueOfRow("edtBer1Summa"), "6000,00");
}

TEST_F(CostEstimate, MissingNumberOfEqualRowsCountsAsZero) {
  AddEstimateRow({{u"SelectNoOf", Null()}, {u"NoOf", 3}});
  EXPECT_EQ(ValueOfRow("edtBer1Antal"), "0");
  EXPECT_EQ(ValueOfRow("edtBer1Summa"), "0,00");
}

TEST_F(CostEstimate, ZeroCountIsOneBeforeItIsMultiplied) {
  for (const Value& none : {Value(0), Value(Null()), Value(0.4), Value(u"0")}) {
    estimateRows.clear();
    AddEstimateRow({{u"SelectNoOf", 2}, {u"NoOf", none}});
    EXPECT_EQ(ValueOfRow("edtBer1Antal"), "2");
  }
}

TEST_F(CostEstimate, CountIsRoundedToAWholeNumberHalfToEven) {
  AddEstimateRow({{u"NoOf", 2.5}});
  EXPECT_EQ(ValueOfRow("edtBer1Antal"), "2");
  estimateRows.front()[u"NoOf"] = 3.5;
  EXPECT_EQ(ValueOfRow("edtBer1Antal"), "4");
}

TEST_F(CostEstimate, MissingAmountIsZero) {
  AddEstimateRow({{u"Amount", Null()}, {u"NoOf", 4}});
  EXPECT_EQ(ValueOfRow("edtBer1Pris"), "0,00");
  EXPECT_EQ(ValueOfRow("edtBer1Summa"), "0,00");
}

TEST_F(CostEstimate, AmountsOfEveryColumnTypeAreRead) {
  for (const Value& amount :
       {Value(1234), Value(1234.0), Value(Currency{12340000}),
        Value(automation::Decimal{.lo = 123400, .scale = 2}), Value(u"1234,00")}) {
    estimateRows.clear();
    AddEstimateRow({{u"Amount", amount}});
    EXPECT_EQ(ValueOfRow("edtBer1Pris"), "1234,00");
  }
}

TEST_F(CostEstimate, OnlyDebitRowsAreIncluded) {
  for (const Value& debit : {Value(u""), Value(Null()), Value(u"A"), Value(u"ä"), Value(u"Ä "),
                             Value(u"ÄÄ"), Value(0)}) {
    ExpectNotTaken({{u"Debit", debit}, {u"Amount", 77.0}});
  }
}

TEST_F(CostEstimate, RowWithoutARateIsSkipped) {
  for (const Value& rate : {Value(0), Value(Null()), Value(0.0), Value(u"0")}) {
    ExpectNotTaken({{u"RateNo", rate}});
  }
}

TEST_F(CostEstimate, RowRefusedByTheCompensationRuleIsSkipped) {
  // Under the older subsidy rules.
  ExpectNotTaken({{u"RegDate", MakeDate({.year = 2002, .month = 3, .day = 31})}});
  // Of a year in which the patient was 19, and under the older rules too.
  ExpectNotTaken({{u"RegDate", MakeDate({.year = 1961, .month = 12, .day = 31})}});
  // Increased compensation that was applied for.
  application[u"IncreasedComp"] = true;
  ExpectNotTaken({{u"IncrComp", true}});
}

TEST_F(CostEstimate, RowWithoutARegistrationDateEndsInTheBoxAndLeavesNoFile) {
  AddEstimateRow();
  AddEstimateRow({{u"RegDate", Null()}});
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(Boxes(), Texts{u"94 Invalid use of Null in WriteNewFHP"});
  EXPECT_FALSE(Exists(u"InNewFHP8.xml"));
}

TEST_F(CostEstimate, InvalidRegistrationDateEndsInTheBoxAndLeavesNoFile) {
  AddEstimateRow({{u"RegDate", u"i morgon"}});
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(Boxes(), Texts{u"13 Type mismatch in WriteNewFHP"});
  EXPECT_FALSE(Exists(u"InNewFHP8.xml"));
}

TEST_F(CostEstimate, SkippedRowIsReadOnlyAsFarAsNeededToSkipIt) {
  const Row unreadable = {{u"RegDate", Null()},
                          {u"Amount", u"många"},
                          {u"IncrComp", u"ja"},
                          {u"NoOf", u"tre"},
                          {u"SelectNoOf", u"?"}};
  for (const Row& skipped :
       {Row{{u"Debit", u"A"}, {u"RateNo", u"61a"}}, Row{{u"Debit", Null()}, {u"RateNo", u"61a"}},
        Row{{u"RateNo", 0}}, Row{{u"RateNo", Null()}}}) {
    Row row = unreadable;
    row.insert(skipped.begin(), skipped.end());
    ExpectNotTaken(row);
    row[u"RegDate"] = u"i morgon";
    ExpectNotTaken(row);
  }
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(CostEstimate, CountOfARefusedRowIsNotRead) {
  ExpectNotTaken({{u"RegDate", MakeDate({.year = 2002, .month = 3, .day = 31})},
                  {u"NoOf", u"tre"},
                  {u"SelectNoOf", 3000000000.0}});
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(CostEstimate, FixedRatesAreRecognisedByTheTextOfTheirNumber) {
  AddEstimateRow({{u"RateNo", u"681,0"}});
  AddEstimateRow({{u"RateNo", u"0682"}});
  AddEstimateRow({{u"RateNo", u" 682"}});
  AddEstimateRow({{u"RateNo", 681.0}, {u"NoOf", 2}});
  EXPECT_EQ(ValueOfRow("edtBer1Atgard"), "681,0");
  EXPECT_EQ(ValueOfRow("edtBer2Atgard"), "0682");
  EXPECT_EQ(ValueOfRow("edtBer3Atgard"), " 682");
  EXPECT_EQ(ValueOfRow("edtBer10Antal"), "2");
  EXPECT_EQ(ValueOfRow("edtBer11Antal"), "not written");
}

TEST_F(CostEstimate, SumsAreBuiltFromUnroundedAmounts) {
  AddEstimateRow({{u"NoOf", 100}, {u"Amount", 0.125}});
  EXPECT_EQ(ValueOfRow("edtBer1Pris"), "0,13");
  EXPECT_EQ(ValueOfRow("edtBer1Summa"), "12,50");
  estimateRows.clear();
  for (int row = 1; row <= 3; ++row) {
    AddEstimateRow({{u"Amount", 0.25 / 64}});
  }
  EXPECT_EQ(ValueOfRow("edtBer3Summa"), "0,00");
  EXPECT_EQ(ValueOfRow("edtBerSummering"), "0,01");
}

TEST_F(CostEstimate, RowsThatDifferOnlyInTheirInternalCodeStayApart) {
  AddEstimateRow({{u"InternalCode", u"A"}});
  AddEstimateRow({{u"InternalCode", u"B"}});
  AddEstimateRow({{u"InternalCode", Null()}});
  EXPECT_EQ(ValueOfRow("edtBer1Antal"), "1");
  EXPECT_EQ(ValueOfRow("edtBer2Antal"), "1");
  EXPECT_EQ(ValueOfRow("edtBer3Antal"), "1");
  EXPECT_EQ(ValueOfRow("edtBerSummering"), "3000,00");
}

TEST_F(CostEstimate, NotesKeepTheirLineEndsAndBlanks) {
  AddEstimateRow();
  application[u"Notes"] = u" Se bilaga\r\nrad två\n\r ";
  const auto fields = FieldsOf(kForm);
  EXPECT_THAT((*fields)[8], Pair("memUpplysningar", " Se bilaga&#13;\nrad tv\xE5\n&#13; "));
}

TEST_F(CostEstimate, InTheQuarterBeforeTheReformTheRateDecides) {
  const Value lastQuarter = MakeDate({.year = 2002, .month = 5, .day = 1});
  ExpectNotTaken({{u"RegDate", lastQuarter}, {u"RateNo", 55}});
  estimateRows.clear();
  AddEstimateRow({{u"RegDate", lastQuarter}, {u"RateNo", 321}});
  EXPECT_EQ(ValueOfRow("edtBer1Atgard"), "321");
}

TEST_F(CostEstimate, RowOfAYearWithThePatientUnderTwentyIsSkipped) {
  patient[u"fDato"] = MakeDate({.year = 1990, .month = 7, .day = 1});
  application[u"RegDate"] = MakeDate({.year = 2060, .month = 1, .day = 2});
  AddEstimateRow(
      {{u"RateNo", 401}, {u"RegDate", MakeDate({.year = 2009, .month = 12, .day = 31})}});
  AddEstimateRow({{u"RateNo", 402}, {u"RegDate", MakeDate({.year = 2010, .month = 1, .day = 1})}});
  EXPECT_EQ(ValueOfRow("edtBer1Atgard"), "402");
  EXPECT_EQ(ValueOfRow("edtBer2Atgard"), "not written");
}

TEST_F(CostEstimate, EstimateRowsAreClosedBeforeTheParticipantLookup) {
  AddEstimateRow();
  Write();
  const auto& log = database.Log();
  const auto opening = [&](const std::u16string& statement) {
    return std::find_if(log.begin(), log.end(), [&](const auto& call) {
      return call.starts_with(u"Recordset.Open") && call.find(statement) != std::u16string::npos;
    });
  };
  const auto rows = opening(u"SELECT  Count(");
  const auto participant = opening(u"Code1 = -32001");
  ASSERT_LT(rows, participant);
  ASSERT_NE(participant, log.end());
  // The shared recordset and the rows themselves.
  EXPECT_EQ(std::count(rows, participant, u"Recordset.Clone -1"), 1);
  EXPECT_EQ(std::count(rows, participant, u"Recordset.Close"), 2);
}

TEST_F(CostEstimate, IncreasedCompensationMarkCountsOnlyWhenAppliedFor) {
  AddEstimateRow({{u"IncrComp", true}});
  EXPECT_EQ(ValueOfRow("edtBer1Summa"), "1000,00");
}

TEST_F(CostEstimate, SumsWithoutAnyRowAreZeroAndMinusTheDeduction) {
  AddEstimateRow({{u"Debit", u"A"}});
  EXPECT_THAT(RowFields(), ElementsAre(Pair("edtBerSummering", "0,00"),
                                       Pair("edtBerTotalErsattning", "-7700,00")));
}

TEST_F(CostEstimate, AmountsUseTheDecimalSeparatorOfTheLocaleAndNoGrouping) {
  locale.regional = {};
  util::CurrentSettings().gDateFormat = u"M/d/yyyy";
  AddEstimateRow({{u"Amount", 1234567.005}});
  EXPECT_EQ(ValueOfRow("edtBer1Pris"), "1234567.01");
  estimateRows.front()[u"Debit"] = u"";
  EXPECT_EQ(ValueOfRow("edtBerSummering"), "0.00");
  EXPECT_EQ(ValueOfRow("edtBerTotalErsattning"), "-7700.00");
}

TEST_F(CostEstimate, ProductsUpTo32BitsAreComputed) {
  AddEstimateRow({{u"NoOf", kLast32}});
  EXPECT_EQ(ValueOfRow("edtBer1Antal"), "2147483647");
  EXPECT_EQ(ValueOfRow("edtBer1Summa"), "2147483647000,00");
  estimateRows.front()[u"RateNo"] = 681;
  estimateRows.front()[u"NoOf"] = kLast32 / 2900;
  EXPECT_EQ(ValueOfRow("edtBer10Summa"), "2147481900,00");
}

TEST_F(CostEstimate, InfiniteAmountEndsInTheBoxAndLeavesNoFile) {
  AddEstimateRow({{u"Amount", std::numeric_limits<double>::infinity()}});
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(Boxes(), Texts{u"6 Overflow in WriteNewFHP"});
  EXPECT_FALSE(Exists(u"InNewFHP8.xml"));
}

TEST_F(CostEstimate, SumBeyondADoubleEndsInTheBoxAndLeavesNoFile) {
  AddEstimateRow({{u"Amount", 1e308}});
  EXPECT_NE(Write(), u"");
  std::filesystem::remove(folder / "Vilnor" / "InNewFHP8.xml");
  AddEstimateRow({{u"Amount", 1e308}});
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(Boxes(), Texts{u"6 Overflow in WriteNewFHP"});
  EXPECT_FALSE(Exists(u"InNewFHP8.xml"));
}

class OverflowingRow : public CostEstimate, public testing::WithParamInterface<Row> {};

TEST_P(OverflowingRow, OverflowingEstimateRowEndsInTheBoxAndLeavesNoFile) {
  AddEstimateRow();
  AddEstimateRow(GetParam());
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(Boxes(), Texts{u"6 Overflow in WriteNewFHP"});
  EXPECT_FALSE(Exists(u"InNewFHP8.xml"));
}

INSTANTIATE_TEST_SUITE_P(Rows, OverflowingRow,
                         testing::Values(Row{{u"NoOf", kLast32}, {u"SelectNoOf", 2}},
                                         Row{{u"NoOf", -kLast32}, {u"SelectNoOf", 2}},
                                         Row{{u"NoOf", 3000000000.0}},
                                         Row{{u"NoOf", 2}, {u"Amount", 1e308}},
                                         Row{{u"RateNo", 681}, {u"NoOf", kLast32 / 2900 + 1}},
                                         Row{{u"RateNo", 682}, {u"NoOf", kLast32 / 3200 + 1}}));

TEST_F(CostEstimate, TextInANumericColumnIsReported) {
  AddEstimateRow({{u"NoOf", u"tre"}});
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(Boxes(), Texts{u"13 Type mismatch in WriteNewFHP"});
}

TEST_F(CostEstimate, NonNumericRateEndsInTheBoxAndLeavesNoFile) {
  AddEstimateRow();
  AddEstimateRow({{u"RateNo", u"61a"}});
  EXPECT_EQ(Write(), u"");
  EXPECT_EQ(Boxes(), Texts{u"13 Type mismatch in WriteNewFHP"});
  EXPECT_FALSE(Exists(u"InNewFHP8.xml"));
}

TEST_F(CostEstimate, RowUnreadableToTheRuleIsReportedOnceAndLeftOut) {
  AddEstimateRow();
  AddEstimateRow({{u"Amount", u"många"}});
  EXPECT_NE(Write(), u"");
  EXPECT_EQ(Boxes(), Texts{u"13 Type mismatch in GetRateCompensation"});
  dialogs.shown.clear();
  ExpectNotTaken({{u"Amount", u"många"}});
  ExpectNotTaken({{u"RateNo", 3000000000.0}});
  EXPECT_EQ(Boxes().back(), u"6 Overflow in GetRateCompensation");
}

}  // namespace
}  // namespace fhp
