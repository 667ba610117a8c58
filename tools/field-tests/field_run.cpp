#include "field-tests/field_run.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <utility>

#include "com/win32.h"
#include "field-tests/computer.h"
#include "field-tests/console.h"
#include "field-tests/core/connection_text.h"
#include "field-tests/core/report.h"
#include "field-tests/core/text.h"
#include "field-tests/neighbours.h"
#include "field-tests/registry_state.h"
#include "field-tests/trace_check.h"
#include "field-tests/trip_player.h"
#include "field-tests/wide.h"
#include "field-tests/work_folder.h"

namespace field_tests {
namespace {

namespace fs = std::filesystem;

std::string Contents(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string Today(const char* format) {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), format, now.wYear, now.wMonth, now.wDay, now.wHour,
                now.wMinute);
  return text.data();
}

std::string EnvironmentText(const wchar_t* name) {
  std::array<wchar_t, 1024> text{};
  GetEnvironmentVariableW(name, text.data(), text.size());
  return Utf8(text.data());
}

class FieldRun {
 public:
  FieldRun(Options options, const fs::path& programs)
      : options_(std::move(options)), folders_{.programs = programs, .work = work_.path()} {
    scrub_.Hide(EnvironmentText(L"USERPROFILE"), "(the user's folder)");
    scrub_.Hide(EnvironmentText(L"USERNAME"), "(user)");
    scrub_.Hide(EnvironmentText(L"COMPUTERNAME"), "(computer)");
  }

  void OpenDatabase() {
    std::u16string connection = automation::FromUtf8(options_.connection);
    if (options_.newAccess) {
      connection = NewAccessDatabase((work_.path() / "access.mdb").wstring());
    }
    if (connection.empty()) {
      return;
    }
    scrub_.Hide(automation::ToUtf8(connection), "(the connection string)");
    for (const auto& secret : SecretsIn(automation::ToUtf8(connection))) {
      scrub_.Hide(secret, "(secret)");
    }
    database_ = std::make_unique<TestDatabase>(connection);
    circumstances_.product = database_->product();
    SetEnvironmentVariableW(L"VILNOR_TEST_DATABASE", com::Wide(connection).c_str());
    SetEnvironmentVariableW(L"VILNOR_TEST_PRODUCT", WideOf(database_->product()).c_str());
  }

  // Whatever goes wrong, what was changed is put back and the report is written.
  void RunEverything() {
    try {
      RunPrograms();
    } catch (const std::exception& error) {
      AddFailure("field tests", scrub_(error.what()));
    }
  }

  void PutBack() {
    if (!hadTypeLibrary_) {
      report_.notes.push_back(
          std::string("whether the system itself registered the type library: ") +
          (IsTypeLibraryRegistered() ? "yes" : "no"));
    }
    Note("registry keys of the practice program, the link program and the tests",
         work_.PutBackRegistry());
    if (database_) {
      Note("tables in the test database", database_->Empty());
    }
    database_.reset();
    Note("the folder " + Utf8(work_.path().wstring()), work_.Remove());
  }

  // Writes the report and says how it ended.
  int Finish() {
    const WineOutcomes wine(Contents(folders_.programs / "wine-outcomes.txt"));
    const fs::path file = WriteReport(HtmlOf(report_, wine));
    for (const auto& each : report_.cases) {
      if (each.outcome == Outcome::Failed) {
        PrintLine("FAILED  " + each.program + ": " + each.name);
      }
    }
    const int notRun = CountOf(report_.cases, Outcome::NotRun);
    if (notRun > 0) {
      PrintLine(
          "\r\nNOT RUN " + std::to_string(notRun) + " tests; the report says why." +
          (circumstances_.product.empty()
               ? "\r\n        Most of them need an empty test database. The simplest: run.cmd "
                 "access"
               : ""));
    }
    PrintLine("\r\nPlease send back this report: " + Utf8(file.wstring()));
    const int failed = CountOf(report_.cases, Outcome::Failed);
    PrintLine(std::to_string(CountOf(report_.cases, Outcome::Passed)) + " passed, " +
              std::to_string(failed) + " failed");
    return failed == 0 ? kAllPassed : kSomethingFailed;
  }

  std::string Presentable(const std::string& text) const { return scrub_(text); }
  void Describe() {
    report_.component = ComponentVersion(folders_.programs / "Vilnor.dll");
    report_.when = Today("%04d-%02d-%02d %02d:%02d");
    report_.inWine = IsWine();
    report_.computer = ComputerFacts();
    report_.computer.emplace_back(
        "Test database",
        database_ ? database_->product() + ": " +
                        field_tests::Presentable(automation::ToUtf8(database_->connectionString()))
                  : "none");
    for (auto& fact : report_.computer) {
      fact.second = scrub_(fact.second);
    }
  }

 private:
  void RunPrograms() {
    circumstances_.quick = options_.quick;
    circumstances_.machineKeys = !options_.asUser && MayWrite(kLinkKey);
    circumstances_.inUse = !SetInstallationsAside();
    for (const auto& program : TestPrograms()) {
      Timed(program.name, [&] { return RunTests(program, folders_, circumstances_); });
    }
    Timed("trips", [&] {
      const Installation installation(folders_, options_.asUser);
      circumstances_.tripProblem = installation.problem();
      return PlayTrips(folders_, circumstances_, installation, database_.get());
    });
    Timed("trace", [&] { return Cases{CheckTrace(folders_, circumstances_)}; });
  }

  template <class Work>
  void Timed(const std::string& program, Work&& work) {
    if (Stopped() || !obstacle_.empty()) {
      return;
    }
    Print(program + " ... ");
    const auto began = std::chrono::steady_clock::now();
    for (auto& each : Results(program, work)) {
      each.text = scrub_(each.text);
      report_.cases.push_back(std::move(each));
    }
    if (Stopped()) {
      AddFailure(program, Closing() ? "stopped: the window was closed" : "stopped by Ctrl+C");
    }
    const auto took = std::chrono::steady_clock::now() - began;
    report_.times.push_back({.program = program,
                             .seconds = static_cast<int>(
                                 std::chrono::duration_cast<std::chrono::seconds>(took).count())});
    PrintLine(LineOf(report_.times.back(), report_.cases).substr(program.size() + 2));
  }

  template <class Work>
  Cases Results(const std::string& program, Work& work) {
    try {
      RequireNoPracticeProgram();
      return work();
    } catch (const CannotWork& obstacle) {
      obstacle_ = obstacle.what();
      PrintLine("\r\n" + obstacle_);
      return {{.program = program, .name = "run", .outcome = Outcome::Failed, .text = obstacle_}};
    } catch (const std::exception& error) {
      return {
          {.program = program, .name = "run", .outcome = Outcome::Failed, .text = error.what()}};
    }
  }

  void AddFailure(const std::string& program, const std::string& text) {
    report_.cases.push_back(
        {.program = program, .name = "run to its end", .outcome = Outcome::Failed, .text = text});
  }

  void Note(const std::string& what, bool isPutBack) {
    report_.notes.push_back(scrub_(what) + (isPutBack ? ": put back" : ": NOT put back"));
    report_.cases.push_back({.program = "afterwards",
                             .name = scrub_(what) + " are as before",
                             .outcome = isPutBack ? Outcome::Passed : Outcome::Failed,
                             .text = isPutBack ? "" : "See the end of this report."});
  }

  fs::path WriteReport(const std::string& html) const {
    const std::string name = Today("report-%04d-%02d-%02d-%02d%02d") + ".html";
    // Where run.cmd is, unless that is a read-only folder.
    for (const auto& folder : {folders_.programs.parent_path(), work_.path().parent_path()}) {
      std::ofstream file(folder / name, std::ios::binary);
      if (file << html) {
        return folder / name;
      }
    }
    return {};
  }

  Options options_;
  const bool hadTypeLibrary_ = IsTypeLibraryRegistered();
  WorkFolder work_;
  Folders folders_;
  Scrubber scrub_;
  Circumstances circumstances_;
  std::unique_ptr<TestDatabase> database_;
  Report report_;
  // Why the rest is not run.
  std::string obstacle_;
};

}  // namespace

int Run(const Options& options, const fs::path& programs) {
  RequireNoPracticeProgram();
  SetEnvironmentVariableW(L"VILNOR_FIELD_TESTS", L"1");
  FieldRun run(options, programs);
  try {
    run.OpenDatabase();
  } catch (const Unusable& problem) {
    PrintLine(run.Presentable(problem.what()));
    run.PutBack();
    return kCouldNotBegin;
  }
  run.Describe();
  run.RunEverything();
  run.PutBack();
  return run.Finish();
}

}  // namespace field_tests
