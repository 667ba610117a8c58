#include "field-tests/core/rules.h"

#include <gmock/gmock.h>

#include "field-tests/core/trip.h"

namespace field_tests {
namespace {

using testing::HasSubstr;

const Circumstances kEverything = {
    .machineKeys = true, .inUse = false, .tripProblem = {}, .product = "SQLite", .quick = false};

TEST(Rules, WithEverythingOnlyWhatIsUnsafeOrWinesIsLeftOut) {
  for (const auto* const test : {"Events.X", "Creation.X", "TypeLibrary.X"}) {
    EXPECT_EQ(WhyNotRun("com_tests", test, kEverything), "") << test;
  }
  EXPECT_EQ(WhyNotRun("trips", "new case sent", kEverything), "");
  EXPECT_THAT(WhyNotRun("com_tests", "Registration.X", kEverything), HasSubstr("registers"));
  EXPECT_THAT(WhyNotRun("com_tests", "OrdinaryUser.X", kEverything), HasSubstr("access rights"));
  EXPECT_THAT(WhyNotRun("contract_tests", "AdoOdbc.X", kEverything), HasSubstr("stand-in"));
}

TEST(Rules, WithoutADatabaseItSaysHowToGiveOne) {
  auto without = kEverything;
  without.product.clear();
  for (const auto* const program : {"database_tests", "trips"}) {
    EXPECT_THAT(WhyNotRun(program, "X.Y", without), HasSubstr("run.cmd access"));
  }
  EXPECT_THAT(WhyNotRun("contract_tests", "Products/X.Y/SQLite", without), HasSubstr("database"));
  EXPECT_EQ(WhyNotRun("contract_tests", "ResultDocuments.X", without), "");
  EXPECT_EQ(WhyNotRun("com_tests", "Binding.X", without), "");
}

TEST(Rules, WithoutAdministratorRightsTripsAreMadeAndTheRestSaysWhatItNeeds) {
  auto user = kEverything;
  user.machineKeys = false;
  EXPECT_THAT(WhyNotRun("com_tests", "Events.X", user), HasSubstr("administrator"));
  EXPECT_EQ(WhyNotRun("trips", "new case sent", user), "");
  user.tripProblem = "a problem";
  EXPECT_EQ(WhyNotRun("trips", "new case sent", user), "a problem");
}

TEST(Rules, InstalledProgramsThatCannotBeSetAsideAreNotUsed) {
  auto inUse = kEverything;
  inUse.inUse = true;
  EXPECT_THAT(WhyNotRun("com_tests", "Creation.X", inUse), HasSubstr("set it aside"));
  EXPECT_EQ(WhyNotRun("windows_tests", "X.Y", inUse), "");
}

TEST(Rules, ContractIsTestedOnlyOnProductsThatItsStatementsAreFor) {
  auto access = kEverything;
  access.product = "Access";
  EXPECT_NE(WhyNotRun("contract_tests", "Products/X.Y/Access", access), "");
  EXPECT_EQ(WhyNotRun("database_tests", "Products/X.Y/Access", access), "");
}

TEST(Rules, QuickLeavesOutMostAndSaysSo) {
  auto quick = kEverything;
  quick.quick = true;
  EXPECT_EQ(WhyNotRun("trips", "new case sent", quick), "");
  EXPECT_EQ(WhyNotRun("trips", "new case cancelled", quick), "left out by /quick");
}

TEST(Rules, RuleWithoutATestIsStale) {
  EXPECT_THAT(StaleRules("windows_tests", {"Other.X"}), testing::ElementsAre("User32Windows.*"));
  EXPECT_THAT(StaleRules("windows_tests", {"User32Windows.X"}), testing::IsEmpty());
  std::vector<std::string> names;
  for (const auto& trip : Trips()) {
    names.push_back(trip.name);
  }
  EXPECT_THAT(StaleRules("trips", names), testing::IsEmpty());
}

}  // namespace
}  // namespace field_tests
