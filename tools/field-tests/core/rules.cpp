#include "field-tests/core/rules.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "field-tests/core/text.h"

namespace field_tests {
namespace {

constexpr std::string_view kRegistration =
    "it registers the component on the computer; the field tests register nothing";
constexpr std::string_view kRights =
    "it changes access rights of the computer's registry keys; only for computers that can be "
    "thrown away";
constexpr std::string_view kStandIn = "it tests the stand-in for ADO, which exists only in Wine";
constexpr std::string_view kNeighbour =
    "it needs the run-time library of a compiler, which is not shipped";

struct Never {
  std::string_view program;
  std::string_view test;
  std::string_view reason;
};

constexpr auto kNever = std::to_array<Never>({
    {"com_tests", "Registration.*", kRegistration},
    {"com_tests", "RegistrationFaults.*", kRegistration},
    {"com_tests", "Unloading.*", kRegistration},
    {"com_tests", "Staying.*", kRegistration},
    {"com_tests", "VbScript.*", kRegistration},
    {"com_tests", "OrdinaryUser.*", kRights},
    {"com_tests", "OfTheSetting.*", kRights},
    {"com_tests", "Both/Servers.LongServerPathIsRegisteredCompletely/*", kRegistration},
    {"com_tests", "Both/Servers.*/1", kStandIn},
    {"com_tests", "Both/Servers.*/2", kStandIn},
    {"com_tests", "Enumerators.Ado*", kStandIn},
    {"com_tests", "*Neighbour.*", kNeighbour},
    {"contract_tests", "AdoOdbc.*", kStandIn},
});

struct Pattern {
  std::string_view program;
  std::string_view test;
};

// They put a host and a link program into HKEY_LOCAL_MACHINE for their time.
constexpr auto kMachineKeys = std::to_array<Pattern>({
    {"com_tests", "Apartments.*"},
    {"com_tests", "Events.*"},
    {"com_tests", "Notifications.*"},
    {"com_tests", "TwoSessions.*"},
});

constexpr auto kDatabase = std::to_array<Pattern>({
    {"com_tests", "Apartments.*"},
    {"com_tests", "BVilnorOperations.*"},
    {"com_tests", "DBVilnorOperations.*"},
    {"com_tests", "DBVilnor.*"},
    {"com_tests", "Events.*"},
    {"com_tests", "Notifications.*"},
    {"com_tests", "Results.*"},
    {"com_tests", "WrongThread.*"},
    {"contract_tests", "Products/*"},
    {"database_tests", "*"},
});

// A sample that takes seconds, of each kind.
constexpr auto kQuick = std::to_array<Pattern>({
    {"com_tests", "Apartments.*"},
    {"com_tests", "Creation.*"},
    {"com_tests", "Binding.*"},
    {"com_tests", "Events.*"},
    {"contract_tests", "ResultDocuments.*"},
    {"contract_tests", "MsxmlBytes.*"},
    {"contract_tests", "Products/StatementContract.*"},
    {"database_tests", "*Users.*"},
    {"windows_tests", "User32Windows.*"},
    {"trips", "new case sent"},
    {"trips", "existing case deleted, the user answers Yes"},
    {"trips", "application with a cost estimate sent"},
    {"trips", "Vilnor Link alone"},
});

template <class List>
bool Lists(const List& list, const std::string& program, const std::string& test) {
  return std::any_of(list.begin(), list.end(), [&](const auto& each) {
    return each.program == program && Matches(each.test, test);
  });
}

template <class List>
void AddStale(const List& list, const std::string& program, const std::vector<std::string>& tests,
              std::vector<std::string>& stale) {
  for (const auto& rule : list) {
    const bool matches = std::any_of(tests.begin(), tests.end(), [&](const std::string& test) {
      return Matches(rule.test, test);
    });
    if (rule.program == program && !matches) {
      stale.emplace_back(rule.test);
    }
  }
}

// The contract's statements are written for these.
bool IsKnownToTheContract(const std::string& product) {
  return product == "SQLite" || product == "PostgreSQL" || product == "MariaDB";
}

}  // namespace

std::string WhyNotRun(const std::string& program, const std::string& test,
                      const Circumstances& circumstances) {
  const auto* const never = std::find_if(kNever.begin(), kNever.end(), [&](const Never& each) {
    return each.program == program && Matches(each.test, test);
  });
  if (never != kNever.end()) {
    return std::string(never->reason);
  }
  if (circumstances.quick && !Lists(kQuick, program, test)) {
    return "left out by /quick";
  }
  const bool isTrip = program == "trips";
  if (circumstances.product.empty() && (isTrip || Lists(kDatabase, program, test))) {
    return "it needs a database: run.cmd \"CONNECTION STRING\", or run.cmd access";
  }
  if (circumstances.inUse && program == "com_tests") {
    return "a practice program or Vilnor Link is installed on this computer, and only an "
           "administrator may set it aside for the tests: start run.cmd as administrator";
  }
  if (isTrip && !circumstances.tripProblem.empty()) {
    return circumstances.tripProblem;
  }
  if (!circumstances.machineKeys && Lists(kMachineKeys, program, test)) {
    return "it needs administrator rights, to name a practice program and a link program in "
           "HKEY_LOCAL_MACHINE: start run.cmd as administrator";
  }
  if (program == "contract_tests" && Matches("Products/*", test) &&
      !IsKnownToTheContract(circumstances.product)) {
    return "its statements are SQLite's, PostgreSQL's and MariaDB's";
  }
  return {};
}

std::vector<std::string> StaleRules(const std::string& program,
                                    const std::vector<std::string>& tests) {
  std::vector<std::string> stale;
  AddStale(kNever, program, tests, stale);
  AddStale(kMachineKeys, program, tests, stale);
  AddStale(kDatabase, program, tests, stale);
  AddStale(kQuick, program, tests, stale);
  return stale;
}

}  // namespace field_tests
