#include "field-tests/test_programs.h"

#include <algorithm>
#include <fstream>

#include "field-tests/child.h"
#include "field-tests/console.h"
#include "field-tests/core/gtest_output.h"
#include "field-tests/wide.h"

namespace field_tests {
namespace {

constexpr std::chrono::seconds kListing(60);
// Without a test ending for so long, the program hangs. The longest test takes half a minute in
// Wine.
constexpr std::chrono::minutes kLimit(10);
constexpr int kMostStarts = 6;

using Names = std::vector<std::string>;

class Runner {
 public:
  Runner(const TestProgram& program, const Folders& folders)
      : program_(program.name),
        command_(Quoted((folders.programs / (program.name + ".exe")).wstring()) + L" " +
                 program.options),
        output_(folders.work / "output.txt"),
        flags_(folders.work / "tests.txt") {}

  // Empty if the program does not start.
  Names List() {
    Child child(command_ + L" --gtest_list_tests", output_);
    return child.started() && child.WaitFor(kListing) ? ListedTests(child.Output()) : Names();
  }

  // Runs the tests until the program ends. The first of them that has not ended then is failed.
  Cases Run(const Names& tests) {
    WriteFlags(tests);
    Child child(command_ + L" --gtest_flagfile=" + flags_.wstring(), output_);
    const bool ended = child.started() && child.WaitFor(kLimit);
    auto log = ReadTestLog(program_, child.Output());
    if (log.ended.size() < tests.size()) {
      const std::string how =
          !child.started() ? "the program does not start"
          : ended          ? "the program ended with exit code " + ExitCodeText(child.ExitCode())
                  : "the program was ended after " + std::to_string(kLimit.count()) + " minutes";
      log.ended.push_back(
          {.program = program_,
           .name = log.unfinished.empty() ? FirstLeft(tests, log.ended) : log.unfinished,
           .outcome = Outcome::Failed,
           .text = log.lastWords + how});
    }
    return log.ended;
  }

  static std::string FirstLeft(const Names& tests, const Cases& ended) {
    return *std::find_if(tests.begin(), tests.end(),
                         [&](const std::string& test) { return !IsIn(ended, test); });
  }
  static bool IsIn(const Cases& cases, const std::string& test) {
    return std::any_of(cases.begin(), cases.end(),
                       [&](const Case& each) { return each.name == test; });
  }

 private:
  // The names can be too many for a command line.
  void WriteFlags(const Names& tests) const {
    std::ofstream file(flags_, std::ios::binary);
    file << "--gtest_filter=";
    for (const auto& test : tests) {
      file << test << ":";
    }
    file << "\n--gtest_color=no\n";
  }

  std::string program_;
  std::wstring command_;
  std::filesystem::path output_;
  std::filesystem::path flags_;
};

}  // namespace

const std::vector<TestProgram>& TestPrograms() {
  static const std::vector<TestProgram> programs = {
      {.name = "windows_tests", .options = L""},
      {.name = "contract_tests", .options = L""},
      {.name = "com_tests", .options = L"--registration-free"},
      {.name = "database_tests", .options = L""}};
  return programs;
}

Cases RunTests(const TestProgram& program, const Folders& folders,
               const Circumstances& circumstances) {
  Runner runner(program, folders);
  Cases cases;
  Names left;
  const auto listed = runner.List();
  if (listed.empty()) {
    return {{.program = program.name,
             .name = "start",
             .outcome = Outcome::Failed,
             .text = "The program does not start or lists no tests."}};
  }
  for (const auto& rule : StaleRules(program.name, listed)) {
    cases.push_back({.program = program.name,
                     .name = "rule " + rule,
                     .outcome = Outcome::Failed,
                     .text = "No test has this name."});
  }
  for (const auto& test : listed) {
    const auto reason = WhyNotRun(program.name, test, circumstances);
    if (reason.empty()) {
      left.push_back(test);
    } else {
      cases.push_back(
          {.program = program.name, .name = test, .outcome = Outcome::NotRun, .text = reason});
    }
  }
  for (int starts = 0; !left.empty() && starts < kMostStarts && !Stopped(); ++starts) {
    const auto ended = runner.Run(left);
    cases.insert(cases.end(), ended.begin(), ended.end());
    std::erase_if(left, [&](const std::string& test) { return Runner::IsIn(ended, test); });
  }
  for (const auto& test : left) {
    cases.push_back({.program = program.name,
                     .name = test,
                     .outcome = Outcome::Failed,
                     .text = "never reached: the program ended too early"});
  }
  return cases;
}

}  // namespace field_tests
