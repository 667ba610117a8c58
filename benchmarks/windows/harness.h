// Measures by turns with the system's performance counter, and prints what the report reads: a line
// "SUBJECT/VARIANT<tab>nanoseconds" for each repetition.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace benchmarks {

struct Variant {
  std::string name;
  std::function<void()> run;
  // So many things that one run does.
  double per = 1;
  // Around each run, not measured.
  std::function<void()> before = nullptr;
  std::function<void()> after = nullptr;
};

// A repetition of a variant is `runs` runs, one after the other; variants take turns.
void Measure(const std::string& subject, const std::vector<Variant>& variants, int repetitions,
             int runs);

// A figure that is no time.
void Print(const std::string& name, double figure);

// Ends the program with the reason: a measurement of something that fails is none.
[[noreturn]] void Fail(const std::string& reason);

// Seconds since some moment.
double Now();

}  // namespace benchmarks
