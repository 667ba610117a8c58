#include "field-tests/core/trip.h"

#include <gmock/gmock.h>

namespace field_tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const TripPlaces kPlaces = {
    .linkProgram = "L.exe", .exchangeFolder = "C:\\X", .decimalSeparator = ","};

Trip SomeTrip() {
  Trip trip;
  trip.name = "trip";
  trip.call = "new-case 4711 12 3";
  trip.request = "In.xml";
  trip.changes = {"+ Journal 505: PID=4711 Dato=now"};
  trip.boxes = {"\"a box\"", "* in AddNewCase"};
  trip.fields = {{"sum", "1{point}50"}, {"twice", "a b"}, {"none", std::nullopt}};
  return trip;
}

TripOutcome ItsOutcome() {
  TripOutcome outcome;
  outcome.output = {"call new-case", "box \"Vilnor Link connection\" \"a box\" OK",
                    "box \"Vilnor Link connection\" \"-2147 no in AddNewCase\" OK",
                    "notification 10002 handled"};
  outcome.commandLine = "L.exe path=\"C:\\X\\In.xml\" version=2 caller=KestraDental removefiles=1";
  outcome.changes = {"+ Journal 505: PID=4711 Dato=now"};
  outcome.request =
      "<FormItem><FormItemKey>sum</FormItemKey><FormItemValue>1,50</FormItemValue></FormItem>"
      "<FormItem><FormItemKey>twice</FormItemKey><FormItemValue>a</FormItemValue></FormItem>"
      "<FormItem><FormItemKey>twice</FormItemKey><FormItemValue>b</FormItemValue></FormItem>";
  return outcome;
}

TEST(TripCheck, TripThatWentAsExpectedHasNoFaults) {
  EXPECT_THAT(Faults(SomeTrip(), ItsOutcome(), kPlaces), IsEmpty());
}

TEST(TripCheck, EachDifferenceIsAFault) {
  const auto fault = [](auto&& change) {
    auto outcome = ItsOutcome();
    change(outcome);
    return Faults(SomeTrip(), outcome, kPlaces);
  };
  EXPECT_THAT(fault([](auto& o) { o.exitCode = 4; }), ElementsAre(HasSubstr("exit code")));
  EXPECT_THAT(fault([](auto& o) { o.output.pop_back(); }), ElementsAre(HasSubstr("last line")));
  EXPECT_THAT(fault([](auto& o) { o.commandLine = ""; }), ElementsAre(HasSubstr("command line")));
  EXPECT_THAT(fault([](auto& o) { o.changes.clear(); }), ElementsAre(HasSubstr("changed rows")));
  EXPECT_THAT(fault([](auto& o) { o.left = {"Out.xml"}; }), ElementsAre(HasSubstr("files left")));
  EXPECT_THAT(fault([](auto& o) { o.output.insert(o.output.begin(), "result true"); }),
              ElementsAre(HasSubstr("the result")));
  EXPECT_THAT(fault([](auto& o) { o.output.insert(o.output.begin(), "event UpdateJournal"); }),
              ElementsAre(HasSubstr("events")));
  EXPECT_THAT(fault([](auto& o) { o.output.erase(o.output.begin() + 1); }),
              ElementsAre(HasSubstr("message boxes")));
  EXPECT_THAT(fault([](auto& o) { o.request.replace(o.request.find("1,50"), 4, "1.50"); }),
              ElementsAre(HasSubstr("form field sum")));
  EXPECT_THAT(fault([](auto& o) {
                o.request +=
                    "<FormItem><FormItemKey>none</FormItemKey><FormItemValue></FormItemValue>";
              }),
              ElementsAre(HasSubstr("form field none")));
}

TEST(TripCheck, RowsAreComparedByTheirKey) {
  const std::vector<Table> before = {
      {.name = "T", .columns = {"ID", "A", "B"}, .rows = {{"1", "x", "NULL"}, {"2", "y", "z"}}}};
  const std::vector<Table> after = {
      {.name = "T",
       .columns = {"ID", "A", "B"},
       .rows = {{"1", "x", "w"}, {"3", "2026-11-22 14:05:01", "NULL"}}}};
  EXPECT_THAT(Changes(before, after, "2026-11-22 14:05:00", "2026-11-22 14:05:02"),
              ElementsAre("~ T 1: B=w", "+ T 3: A=now", "- T 2"));
  EXPECT_THAT(Changes(before, before, "", ""), IsEmpty());
}

TEST(TripCheck, TimeInAFileNameIsReplaced) {
  EXPECT_EQ(WithoutTime("OutNewCase4711 2026-11-22 14.05.00.xml"), "OutNewCase4711 DATE TIME.xml");
  EXPECT_EQ(WithoutTime("OutNewCase4711.xml"), "OutNewCase4711.xml");
}

TEST(TripCheck, TripsAreThoseOfTheSystemTests) {
  EXPECT_GT(Trips().size(), 30U);
  EXPECT_EQ(Trips()[0].name, "new case sent");
  EXPECT_EQ(Trips()[0].request, "InNewCase4711.xml");
}

}  // namespace
}  // namespace field_tests
