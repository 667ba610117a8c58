// How long it takes to write the tree of a request as a file's bytes.
#include <benchmark/benchmark.h>
#include <cstdint>

#include "exchange/envelope.h"
#include "exchange/serializer.h"

namespace {

// A request with as many form fields as the benchmark's argument says: a prior-approval application
// has one to two hundred.
exchange::Element RequestWithFields(std::int64_t fields) {
  auto envelope = exchange::NewEnvelope();
  auto& request = envelope.Add(u"NewCase");
  for (std::int64_t field = 0; field < fields; ++field) {
    auto& item = request.Add(u"FormItem");
    item.Add(u"FormItemKey", u"Behandling_Åtgärd");
    item.Add(u"FormItemValue", u"Krona & bro, <tand 11>, är åtgärdad");
  }
  return envelope;
}

void WritesARequest(benchmark::State& state) {
  const auto request = RequestWithFields(state.range(0));
  std::int64_t bytes = 0;
  for (auto _ : state) {
    bytes += static_cast<std::int64_t>(exchange::Serialize(request).size());
  }
  state.SetBytesProcessed(bytes);
}
BENCHMARK(WritesARequest)->Arg(10)->Arg(200)->Arg(2000);

}  // namespace
