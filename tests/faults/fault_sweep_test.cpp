// Every fault at every call: each operation runs once to count its port calls, then once for each
// call and each of its possible errors. Where a rollback follows the fault, it runs again with that
// rollback failing. No fault may lose anything or leave it half done or stuck.
#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>
#include <map>
#include <optional>

#include "automation/text.h"
#include "fakes/printing.h"
#include "faults/effects.h"
#include "faults/operations.h"

namespace faults {
namespace {

using automation::AutomationError;
using automation::Decimal10;
using automation::ToUtf8;
using platform::Icon;

// Operations that both classes have. BVilnor reports errors while it creates the database object,
// DBVilnor afterwards.
bool IsInBothClasses(const std::u16string& place) {
  return place.ends_with(u"VilnorUser") || place == u"GetVilnorUserByPID";
}

// Procedures whose box is critical: those of DBVilnor and of the module. The others are BVilnor's.
Icon IconOf(const std::u16string& place, const std::u16string& operation) {
  static const std::map<std::u16string, Icon> ofHost = {
      {u"GetVilnorOutputPath", Icon::Exclamation}, {u"GetVilnorCommandLine", Icon::Exclamation},
      {u"StartVilnor", Icon::Exclamation},         {u"WriteNewCase", Icon::Exclamation},
      {u"WriteExistCase", Icon::Exclamation},      {u"WriteSearchPatient", Icon::Exclamation},
      {u"WriteNewFHP", Icon::Exclamation},         {u"XMLReadNewCase", Icon::Exclamation},
      {u"XMLReadNewFHP", Icon::Exclamation},       {u"XMLReadExistCase", Icon::Exclamation}};
  const auto found = ofHost.find(place);
  return found != ofHost.end() || place == u"OpenExistCase" ||
                 (operation.starts_with(place) && !IsInBothClasses(place))
             ? Icon::Exclamation
             : Icon::Critical;
}

// Calls whose failure the component ignores: it has another way, or the failure concerns what is
// being undone anyway.
bool MayBeSilent(Call call) {
  return call == Call::Registry || call == Call::Rollback || call == Call::Rows;
}

// The box about the missing link program. It also reports failures of the calls that look for it.
bool IsAboutTheMissingProgram(const platform::MessageBox& box) {
  return box.text.starts_with(u"Kunde inte hitta");
}
bool LooksForTheProgram(Call call) {
  return call == Call::Registry || call == Call::GetSetting || call == Call::FileLength;
}

// With VILNOR_FAULTS=all every possible error of the call, otherwise only the first, which is
// enough for the everyday checks.
std::vector<AutomationError> ErrorsToInject(Call call) {
  const auto& errors = ErrorsOf(call);
  const char* wanted = std::getenv("VILNOR_FAULTS");
  const bool all = wanted != nullptr && std::string_view(wanted) == "all";
  return all ? errors : std::vector<AutomationError>{errors.front()};
}

class FaultSweep : public testing::Test {
 protected:
  struct Outcome {
    Rows rows;
    std::string request;
    // The contents of the operation's result file, or of an unread one.
    std::string result;
    bool empty = false;
    bool rolledBack = false;
    std::vector<std::u16string> boxes = {};
  };

  // Where a fault occurs, and what is right when nothing or everything has been done.
  struct Place {
    std::size_t position = 0;
    Call call = {};
    AutomationError error;
    const Outcome& before;
    const Outcome& whole;
  };

  static Outcome Run(const Operation& operation, World& world) {
    const bool empty = operation.run(world);
    const auto& calls = world.plan.calls();
    const bool rolledBack = std::find(calls.begin(), calls.end(), Call::Rollback) != calls.end();
    world.plan.Clear();
    return {world.ReadRows(),     world.Contents(operation.requestFile), {}, empty, rolledBack,
            world.dialogs.Texts()};
  }

  static void ExpectProperBoxes(const Operation& operation, const World& world, Call call,
                                const AutomationError& error) {
    if (world.dialogs.shown.empty()) {
      EXPECT_TRUE(MayBeSilent(call) || operation.name.starts_with("DBVilnor."))
          << "no box was shown";
      return;
    }
    const auto first = std::find_if_not(world.dialogs.shown.begin(), world.dialogs.shown.end(),
                                        IsAboutTheMissingProgram);
    if (first == world.dialogs.shown.end()) {
      EXPECT_TRUE(LooksForTheProgram(call)) << "the failure is not told";
    } else if (call != Call::Registry && first->buttons == platform::Buttons::Ok) {
      const std::u16string expected = Decimal10(error.number()) + u" " + error.description();
      EXPECT_TRUE(first->text.starts_with(expected)) << ToUtf8(first->text);
    }
    for (const auto& box : world.dialogs.shown) {
      const auto in = box.text.rfind(u" in ");
      if (box.icon == Icon::Question || IsAboutTheMissingProgram(box)) {
        continue;
      }
      EXPECT_EQ(box.title, u"Vilnor Link connection");
      if (in == std::u16string::npos) {
        ADD_FAILURE() << "a box without a place: " << ToUtf8(box.text);
        continue;
      }
      const bool direct = operation.name.starts_with("DBVilnor.");
      if (IsInBothClasses(box.text.substr(in + 4)) && call != Call::Statement &&
          call != Call::Field) {
        continue;
      }
      EXPECT_EQ(box.icon,
                direct ? Icon::Critical
                       : IconOf(box.text.substr(in + 4), automation::FromUtf8(operation.name)))
          << ToUtf8(box.text);
    }
  }

  // Whatever fails, support sees it, even where the user sees nothing.
  static void ExpectLineOfFault(const World& world) {
    const auto& lines = world.trace.lines;
    EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), [](const auto& line) {
      return LevelOf(line) <= platform::TraceLevel::Warning;
    })) << "the trace says nothing";
  }

  // The operation that follows a fault works.
  static void ExpectRecovery(World& world) {
    // A setting may have been forgotten, or may name a program that no longer exists.
    world.RegisterLinkProgram();
    world.dialogs = fakes::Dialogs();
    world.processes.started.clear();
    world.vilnor().OpenWithNewCase(4711, 12, 3);
    EXPECT_EQ(world.processes.started.size(), 1U);
    EXPECT_TRUE(world.dialogs.shown.empty());
  }

  static bool IsWholeRequest(const std::string& bytes) {
    return bytes.starts_with("<?xml version='1.0' encoding='ISO-8859-1'?>\n<Envelope ") &&
           bytes.ends_with("</Envelope>\n");
  }

  static void ExpectNothingLost(const Operation& operation, const World& world,
                                const Outcome& before, const Outcome& whole, const Outcome& after) {
    // Kept: UpdateVilnorUser reports a name that it cannot read, takes it for missing and adds one.
    const bool addsUser = operation.name.ends_with("UpdateVilnorUser");
    EXPECT_TRUE(after.rows == before.rows || after.rows == whole.rows ||
                (addsUser && after.rows.links == before.rows.links &&
                 after.rows.journal == before.rows.journal))
        << "half an update";
    EXPECT_TRUE(world.LooseEnds().empty()) << "a link without its journal line";
    if (!operation.resultFile.empty() && after.rows != whole.rows) {
      EXPECT_TRUE(world.Waits(operation.resultFile, before.result)) << "the result is lost";
    }
    if (!operation.unreadFile.empty()) {
      EXPECT_TRUE(world.Waits(operation.unreadFile, before.result)) << "the older result is lost";
    }
    if (!operation.requestFile.empty()) {
      // A failed lookup has been reported and gives empty text, with which the request goes on.
      EXPECT_TRUE(after.request == before.request || IsWholeRequest(after.request))
          << "a torn request file";
    }
    for (const auto& name : world.ExchangeFiles()) {
      EXPECT_TRUE(name.ends_with(".xml")) << name << " was left behind";
    }
    EXPECT_EQ(world.registry.OpenHandles(), 0U);
  }

  static Outcome RunWithFault(const Operation& operation, const Place& place, Effects& effects,
                              bool rollbackFails = false) {
    World world;
    operation.prepare(world);
    world.plan.FailAt(place.position, place.error);
    if (rollbackFails) {
      world.plan.FailRollbacks(ErrorsOf(Call::Rollback).front());
    }
    Outcome after = Run(operation, world);
    effects.AddBoxes(world.dialogs.shown);
    ExpectProperBoxes(operation, world, place.call, place.error);
    // Rows that cannot be read at once are read field by field, which loses nothing.
    if (place.call != Call::Rows) {
      ExpectLineOfFault(world);
    }
    ExpectNothingLost(operation, world, place.before, place.whole, after);
    ExpectRecovery(world);
    return after;
  }

  // Without a fault the operation has one line of its own: "DBVilnor.DeleteFHP", "ReadNewCase sent"
  // and "OpenVilnor, stale setting" by the operation's name.
  static void ExpectOwnLine(const Operation& operation, const World& world) {
    std::string name = operation.name.substr(0, operation.name.find_first_of(" ,"));
    name = name.substr(name.rfind('.') + 1);
    const auto& lines = world.trace.lines;
    EXPECT_TRUE(std::any_of(lines.begin(), lines.end(),
                            [&](const auto& line) {
                              return ToUtf8(line.procedure.name()) == name &&
                                     LevelOf(line) != platform::TraceLevel::Error;
                            }))
        << name << " has no line";
  }

  // Returns how many faults were injected.
  static int Sweep(const Operation& operation, Effects& effects) {
    Outcome before;
    Outcome whole;
    std::vector<Call> calls;
    {
      World world;
      operation.prepare(world);
      before = {world.ReadRows(), world.Contents(operation.requestFile),
                world.Contents(operation.resultFile + operation.unreadFile), true};
      operation.run(world);
      ExpectOwnLine(operation, world);
      calls = world.plan.calls();
      whole = {world.ReadRows(), world.Contents(operation.requestFile), {}, false};
      EXPECT_TRUE(std::all_of(world.dialogs.shown.begin(), world.dialogs.shown.end(),
                              [&](const auto& box) {
                                return box.icon == Icon::Question ||
                                       (operation.tellsOfMissingProgram &&
                                        IsAboutTheMissingProgram(box));
                              }))
          << "fails without a fault: "
          << (world.dialogs.shown.empty() ? "" : ToUtf8(world.dialogs.shown.front().text));
    }
    int faults = 0;
    for (std::size_t position = 0; position < calls.size(); ++position) {
      for (const auto& error : ErrorsToInject(calls[position])) {
        SCOPED_TRACE(operation.name + ": call " + std::to_string(position) + " of " +
                     std::to_string(calls.size()) + " (kind " +
                     std::to_string(static_cast<int>(calls[position])) + ") fails with " +
                     error.what());
        const Place place{position, calls[position], error, before, whole};
        const Outcome after = RunWithFault(operation, place, effects);
        ++faults;
        if (after.rolledBack) {
          const Outcome worse = RunWithFault(operation, place, effects, true);
          EXPECT_EQ(worse.boxes, after.boxes) << "of the rollback nothing is shown";
          ++faults;
        }
        if (testing::Test::HasFailure() && faults > 20) {
          return faults;
        }
      }
    }
    return faults;
  }
};

class EveryFault : public FaultSweep, public testing::WithParamInterface<Operation> {};

TEST_P(EveryFault, FaultAtEveryCallLosesNothingAndIsReported) {
  Effects effects(GetParam());
  const int faults = Sweep(GetParam(), effects);
  EXPECT_TRUE(IsDocumented(effects.Row()))
      << "docs/edge-cases/effects.md has another row or none:\n"
      << effects.Row();
  std::cout << "    " << GetParam().name << ": " << faults << " faults injected\n";
}

TEST(Effects, DocumentHasOneRowPerOperation) {
  EXPECT_EQ(DocumentedRows(), static_cast<int>(EveryOperation().size()));
}

std::string TestName(const testing::TestParamInfo<Operation>& info) {
  std::string name = info.param.name;
  std::replace_if(
      name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Operations, EveryFault, testing::ValuesIn(EveryOperation()), TestName);

}  // namespace
}  // namespace faults
