// The measured passes over a per-tooth text, native and in Wine.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "fhp/tooth_scanner.h"

namespace benchmarks {

inline constexpr std::array<std::size_t, 6> kTextLengths = {100, 320, 1000, 3200, 10'000, 32'000};

// Runs as in a dentist's plan.
inline std::u16string RunsOf(std::size_t characters) {
  constexpr std::u16string_view kRun = u"<11>304 305 306</11>";
  std::u16string text;
  while (text.size() + kRun.size() <= characters) {
    text += kRun;
  }
  return text.append(characters - text.size(), u' ');
}

// Does what the send check does with each run.
inline std::ptrdiff_t CountBlanks(std::u16string_view text, fhp::ScanRules rules) {
  std::ptrdiff_t blanks = 0;
  fhp::ToothScanner teeth(text, rules);
  while (const auto tooth = teeth.Next()) {
    blanks += std::count(tooth->text.begin(), tooth->text.end(), u' ');
  }
  return blanks;
}

}  // namespace benchmarks
