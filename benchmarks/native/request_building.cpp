// The cost per field of a request while rows and per-tooth fields are doubled six times.
#include <benchmark/benchmark.h>
#include <map>
#include <memory>

#include "native/application.h"

namespace {

using benchmarks::Application;
using benchmarks::Clinic;

struct Measured {
  explicit Measured(int rows) : clinic(benchmarks::SmallPractice()), application(clinic, rows) {}
  Clinic clinic;
  Application application;
};

Measured& MeasuredWith(int rows) {
  static std::map<int, std::unique_ptr<Measured>> all;
  auto& measured = all[rows];
  if (!measured) {
    measured = std::make_unique<Measured>(rows);
  }
  return *measured;
}

void BuildsARequest(benchmark::State& state) {
  Measured& measured = MeasuredWith(static_cast<int>(state.range(0)));
  const Clinic::Inside inside(measured.clinic);
  for (auto _ : state) {
    benchmark::DoNotOptimize(measured.application.Build());
  }
  state.counters["per"] =
      static_cast<double>(benchmarks::CountFields(measured.application.Build()));
}
BENCHMARK(BuildsARequest)
    ->Name("request/field")
    ->Apply([](auto* benchmark) {
      for (int rows = 40; rows <= 40 << 6; rows *= 2) {
        benchmark->Arg(rows);
      }
    }) -> MinTime(0.02);

}  // namespace
