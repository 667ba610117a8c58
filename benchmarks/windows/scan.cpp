#include "windows/scan.h"

#include <cstring>

#include "shared/tooth_texts.h"
#include "windows/harness.h"

namespace benchmarks {
namespace {

// Stores the results of the passes, so that they are not optimised away.
volatile std::ptrdiff_t found = 0;

// One pass over the text's bytes, searching for one that does not occur.
const void* SearchOnce(std::u16string_view text) {
  return std::memchr(text.data(), '~', text.size() * sizeof(text.front()));
}

}  // namespace

void MeasureScan(Computer& /*computer*/) {
  for (const std::size_t length : kTextLengths) {
    const std::u16string text = RunsOf(length);
    const auto characters = static_cast<double>(length);
    const std::string suffix = " " + std::to_string(length);
    const auto runs = static_cast<int>(std::size_t{200'000} / length);
    Measure("scan",
            {{.name = "send check" + suffix,
              .run = [&] { found = CountBlanks(text, fhp::kSendCheckScan); },
              .per = characters},
             {.name = "document" + suffix,
              .run = [&] { found = CountBlanks(text, fhp::kDocumentScan); },
              .per = characters},
             {.name = "memchr" + suffix,
              .run = [&] { found = SearchOnce(text) == nullptr ? 1 : 0; },
              .per = characters}},
            40, runs);
  }
}

}  // namespace benchmarks
