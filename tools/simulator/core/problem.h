// An error message for the person at the simulator (Swedish).
#pragma once

#include <exception>
#include <string>
#include <utility>

#include "automation/text.h"

namespace simulator {

class Problem : public std::exception {
 public:
  explicit Problem(std::u16string text)
      : text_(std::move(text)), what_(automation::ToUtf8(text_)) {}

  const std::u16string& text() const { return text_; }
  // The same in UTF-8.
  const char* what() const noexcept override { return what_.c_str(); }

 private:
  std::u16string text_;
  std::string what_;
};

}  // namespace simulator
