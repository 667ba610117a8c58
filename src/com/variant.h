// An owned VARIANT, and its conversion to and from the component's own values.
#pragma once

#include <utility>

#include "automation/value.h"
#include "com/bstr.h"
#include "com/win32.h"

namespace com {

class Variant {
 public:
  Variant() = default;
  // Throws std::bad_alloc when there is no memory for a text.
  explicit Variant(const automation::Value& value);
  explicit Variant(Bstr text);
  // Adds its own reference. VT_EMPTY for a null pointer.
  explicit Variant(IDispatch* object);
  Variant(const Variant&) = delete;
  Variant(Variant&& other) noexcept : content_(other.Detach()) {}
  Variant& operator=(const Variant&) = delete;
  ~Variant() { VariantClear(&content_); }

  const VARIANT& get() const { return content_; }
  // For a call's out parameter: this object owns the value stored there.
  VARIANT* Receive() {
    VariantClear(&content_);
    return &content_;
  }
  // Hands the value over to the caller.
  VARIANT Detach() { return std::exchange(content_, VARIANT{}); }

 private:
  // VT_EMPTY.
  VARIANT content_{};
};

// The value of a VARIANT; references are followed. Unsigned 32-bit and all 64-bit integers become
// decimals. Error 13 for arrays, objects and error codes.
automation::Value ToValue(const VARIANT& variant);

}  // namespace com
