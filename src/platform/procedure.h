// The name of a procedure, for its message box and for the trace.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace platform {

// Made from a literal of the program and from nothing else, so that no text of a patient can be
// taken for one.
class Procedure {
 public:
  // As the box ends, " in OpenWithNewCase". The trace shows the last word, which follows a zero if
  // the box names another procedure.
  template <std::size_t Size>
  consteval Procedure(
      const char16_t (&text)[Size])  // NOLINT(modernize-avoid-c-arrays): what a literal is
      : text_(text),
        boxLength_(static_cast<std::uint16_t>(std::u16string_view(text).size())),
        nameAt_(static_cast<std::uint16_t>(LastWord({text, Size - 1}))) {}

  // The same for a call that is worth a line only if it fails.
  constexpr Procedure TracedIfItFails() const {
    Procedure quiet = *this;
    quiet.isTracedIfItFails_ = true;
    return quiet;
  }

  constexpr std::u16string_view inBox() const { return {text_, boxLength_}; }
  // Ends with a zero.
  constexpr const char16_t* name() const { return text_ + nameAt_; }
  constexpr bool isTracedIfItFails() const { return isTracedIfItFails_; }

 private:
  static consteval std::size_t LastWord(std::u16string_view text) {
    return text.find_last_of(std::u16string_view(u" \0", 2)) + 1;
  }

  const char16_t* text_;
  // Small, so that a compiler can do without it in memory until it is shown.
  std::uint16_t boxLength_;
  std::uint16_t nameAt_;
  bool isTracedIfItFails_ = false;
};

}  // namespace platform
