// Every operation that the host or a notification can call, with its effects.
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "faults/world.h"

namespace faults {

struct Operation {
  std::string name;
  // Creates the files that the operation reads.
  std::function<void(World&)> prepare;
  // Runs the operation; true when it returned its empty result (always true for a procedure).
  std::function<bool(World&)> run;
  // The files in the exchange directory that the operation reads or replaces; "" for none.
  std::string resultFile;
  std::string requestFile;
  // An older unread answer. It must still exist afterwards, under any name.
  std::string unreadFile = {};
  // The box about the missing link program is shown even without a fault.
  bool tellsOfMissingProgram = false;
};

inline void PrintTo(const Operation& operation, std::ostream* out) {
  *out << operation.name;
}

std::vector<Operation> EveryOperation();

}  // namespace faults
