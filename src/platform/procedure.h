// The name of a procedure, for its message box and for the trace.
#pragma once

#include <cstddef>
#include <string_view>

namespace platform {

// Made from a literal of the program and from nothing else, so that no text of a patient can be
// taken for one.
class Procedure {
 public:
  // NOLINTBEGIN(modernize-avoid-c-arrays): what a literal is
  // As the box ends, " in OpenWithNewCase". The trace shows its last word.
  template <std::size_t Size>
  consteval Procedure(const char16_t (&inBox)[Size])
      : inBox_(inBox), length_(Size - 1), name_(inBox + LastWord(inBox)) {}
  // For a procedure whose box names another one.
  template <std::size_t Size, std::size_t NameSize>
  consteval Procedure(const char16_t (&inBox)[Size], const char16_t (&name)[NameSize])
      : inBox_(inBox), length_(Size - 1), name_(name) {}
  // NOLINTEND(modernize-avoid-c-arrays)

  // The same for a call that is worth a line only if it fails.
  constexpr Procedure TracedIfItFails() const {
    Procedure quiet = *this;
    quiet.isTracedIfItFails_ = true;
    return quiet;
  }

  constexpr std::u16string_view inBox() const { return {inBox_, length_}; }
  // Ends with a zero.
  constexpr const char16_t* name() const { return name_; }
  constexpr bool isTracedIfItFails() const { return isTracedIfItFails_; }

 private:
  static consteval std::size_t LastWord(std::u16string_view text) { return text.rfind(u' ') + 1; }

  const char16_t* inBox_;
  std::size_t length_;
  const char16_t* name_;
  bool isTracedIfItFails_ = false;
};

}  // namespace platform
