// The cost per character of a per-tooth text.
#include <benchmark/benchmark.h>
#include <string>

#include "shared/tooth_texts.h"

namespace {

using benchmarks::CountBlanks;

template <class Pass>
void Register(const std::string& name, Pass pass) {
  for (const std::size_t characters : benchmarks::kTextLengths) {
    benchmark::RegisterBenchmark(("scan/" + name + " " + std::to_string(characters)).c_str(),
                                 [=](benchmark::State& state) {
                                   const std::u16string text = benchmarks::RunsOf(characters);
                                   for (auto _ : state) {
                                     benchmark::DoNotOptimize(pass(text));
                                   }
                                   state.counters["per"] = static_cast<double>(characters);
                                 })
        ->MinTime(0.005);
  }
}

const bool kRegistered = [] {
  Register("send check",
           [](std::u16string_view text) { return CountBlanks(text, fhp::kSendCheckScan); });
  Register("document",
           [](std::u16string_view text) { return CountBlanks(text, fhp::kDocumentScan); });
  return true;
}();

}  // namespace
