// The arguments of one call, stored so that they can be passed by reference.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "com/win32.h"

namespace sample_host {

class Arguments {
 public:
  Arguments() = default;
  Arguments(const Arguments&) = delete;
  Arguments(Arguments&& other) noexcept;
  Arguments& operator=(const Arguments&) = delete;
  Arguments& operator=(Arguments&&) = delete;
  ~Arguments();

  void AddNumber(long number);
  void AddText(std::u16string_view text);

  // The argument at `index`, counted from 0 over numbers and texts alike. The component may change
  // the value.
  long* Number(std::size_t index) { return &arguments_.at(index).number; }
  BSTR* Text(std::size_t index) { return &arguments_.at(index).text; }

 private:
  struct Argument {
    long number = 0;
    BSTR text = nullptr;
  };
  std::vector<Argument> arguments_;
};

}  // namespace sample_host
