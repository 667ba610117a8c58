// What the diagnosis says: one finding for each thing that it looked at.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace diagnosis {

enum class State { Fine, Warning, Fault };

// A line of the report. `id` is for programs and never changes; `title` is for people.
struct Check {
  std::u16string_view id;
  std::u16string_view title;
};

struct Finding {
  Check check;
  State state = State::Fine;
  std::u16string text;
  // What to do about it; "" if there is nothing to do.
  std::u16string advice;
};

using Findings = std::vector<Finding>;

}  // namespace diagnosis
