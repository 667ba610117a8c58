// An owned automation string.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "com/win32.h"

namespace com {

// The text of a borrowed BSTR, embedded NULs included; "" for a null one.
std::u16string TextOf(BSTR text);

class Bstr {
 public:
  Bstr() = default;
  // Throws std::bad_alloc when the system has no memory for it.
  explicit Bstr(std::u16string_view text);
  Bstr(const Bstr&) = delete;
  Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
  Bstr& operator=(const Bstr&) = delete;
  Bstr& operator=(Bstr&& other) noexcept {
    std::swap(text_, other.text_);
    return *this;
  }
  ~Bstr() { SysFreeString(text_); }

  BSTR get() const { return text_; }
  // For a call's out parameter: this object owns the string stored there.
  BSTR* Receive() {
    *this = Bstr();
    return &text_;
  }
  // Hands the string over to the caller.
  BSTR Detach() { return std::exchange(text_, nullptr); }
  std::u16string Text() const { return TextOf(text_); }

 private:
  BSTR text_ = nullptr;
};

}  // namespace com
