// Measures variants in turn with the system's performance counter, and prints lines for the report:
// "SUBJECT/VARIANT<tab>nanoseconds" for each repetition.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace benchmarks {

struct Variant {
  std::string name;
  std::function<void()> run;
  // The number of items that one run processes.
  double per = 1;
  // Called around each run, not measured.
  std::function<void()> before = nullptr;
  std::function<void()> after = nullptr;
};

// A repetition of a variant is `runs` consecutive runs; variants take turns.
void Measure(const std::string& subject, const std::vector<Variant>& variants, int repetitions,
             int runs);

// Prints a figure that is not a time.
void Print(const std::string& name, double figure);

// Ends the program with the reason: measuring something that fails is meaningless.
[[noreturn]] void Fail(const std::string& reason);

// Seconds since an arbitrary moment.
double Now();

}  // namespace benchmarks
