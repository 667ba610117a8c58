#include "windows/harness.h"

#include <cstdio>
#include <cstdlib>

#include "com/win32.h"

namespace benchmarks {
namespace {

constexpr int kWarmUps = 3;

double SecondsOfOneRun(const Variant& variant, int runs) {
  double seconds = 0;
  if (!variant.before && !variant.after) {
    const double start = Now();
    for (int run = 0; run < runs; ++run) {
      variant.run();
    }
    seconds = Now() - start;
  } else {
    for (int run = 0; run < runs; ++run) {
      variant.before();
      const double start = Now();
      variant.run();
      seconds += Now() - start;
      variant.after();
    }
  }
  return seconds / runs;
}

}  // namespace

double Now() {
  static const double frequency = [] {
    LARGE_INTEGER ticks;
    QueryPerformanceFrequency(&ticks);
    return static_cast<double>(ticks.QuadPart);
  }();
  LARGE_INTEGER ticks;
  QueryPerformanceCounter(&ticks);
  return static_cast<double>(ticks.QuadPart) / frequency;
}

void Measure(const std::string& subject, const std::vector<Variant>& variants, int repetitions,
             int runs) {
  for (int repetition = -kWarmUps; repetition < repetitions; ++repetition) {
    for (const auto& variant : variants) {
      const double seconds = SecondsOfOneRun(variant, runs);
      if (repetition >= 0) {
        Print(subject + "/" + variant.name, seconds / variant.per * 1e9);
      }
    }
  }
}

void Print(const std::string& name, double figure) {
  std::printf("%s\t%.3f\n", name.c_str(), figure);
  std::fflush(stdout);
}

void Fail(const std::string& reason) {
  std::fprintf(stderr, "%s\n", reason.c_str());
  std::exit(1);
}

}  // namespace benchmarks
