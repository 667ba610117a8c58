// A large prior-approval application in the host's database, and its document.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fhp/application_records.h"
#include "native/practice.h"

namespace benchmarks {

// The sample application that has both forms.
inline constexpr std::int32_t kFullApplication = 1017;

class Application {
 public:
  // Gives the application this many estimate rows, and as many teeth in its plan and findings, and
  // reads it.
  Application(Clinic& clinic, int rows);

  // The bytes of a document with both forms.
  std::string Build();

 private:
  fhp::ApplicationRecords records_;
};

std::size_t CountFields(std::string_view document);

}  // namespace benchmarks
