// The command line of the sample host.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "arguments.h"
#include "box_watcher.h"
#include "operations.h"

namespace sample_host {

// One operation with its arguments.
struct Call {
  std::variant<const Operation<_BVilnor>*, const Operation<_DBVilnor>*> operation;
  Arguments arguments;
  // The words of the command line, for print.
  std::u16string text;
};

struct Options {
  bool help = false;
  // The arguments of InitVilnor.
  std::u16string connection;
  std::int16_t language = 1;
  std::int16_t dbType = 1;
  // How long to wait for the answer of each request; 0 does not wait.
  std::chrono::seconds wait{0};
  BoxOrders boxes;
  std::vector<Call> calls;
};

// Takes the command line's words without the program. Raises UsageError.
Options ParseOptions(const std::vector<std::u16string>& words);

struct UsageError {
  std::u16string text;
};

// The usage text, with all operations.
std::u16string Usage();

}  // namespace sample_host
