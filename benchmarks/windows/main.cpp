// The part of ./bench that runs in Wine: main PRACTICE.DB [SUBJECT...].
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "automation/automation_error.h"
#include "automation/text.h"
#include "com/win32.h"
#include "windows/calls.h"
#include "windows/document.h"
#include "windows/harness.h"
#include "windows/loading.h"
#include "windows/registry.h"
#include "windows/scan.h"
#include "windows/trips.h"

namespace {

using benchmarks::Computer;

const std::map<std::string, void (*)(Computer&)> kSubjects = {
    {"calls", benchmarks::MeasureCalls},          {"document", benchmarks::MeasureDocument},
    {"many-trips", benchmarks::MeasureManyTrips}, {"loading", benchmarks::MeasureLoading},
    {"registry", benchmarks::MeasureRegistry},    {"scan", benchmarks::MeasureScan},
    {"trips", benchmarks::MeasureTrips},
};

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    benchmarks::Fail("which database?");
  }
  CoInitialize(nullptr);
  if (argc == 3 && argv[1] == std::string_view("--loading")) {
    return benchmarks::MicrosecondsOfLoading(std::stoul(argv[2]));
  }
  try {
    Computer computer(argv[1]);
    const std::set<std::string> wanted(argv + 2, argv + argc);
    for (const auto& [name, measure] : kSubjects) {
      if (wanted.empty() || wanted.contains(name)) {
        measure(computer);
      }
    }
  } catch (const automation::AutomationError& error) {
    benchmarks::Fail(automation::ToUtf8(error.description()));
  }
  return 0;
}
