// SAFEARRAYs of VARIANTs.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "com/variant.h"
#include "com/win32.h"

namespace com {

// A new array of VT_EMPTY.
Variant NewArray(std::span<SAFEARRAYBOUND> bounds);
// An array of one dimension.
Variant ArrayOf(std::span<const std::u16string_view> texts);

// An array's elements in memory order: the first index runs fastest. The array is locked as long as
// this object lives.
class Elements {
 public:
  // Error 13 if it is not an array of VARIANTs.
  explicit Elements(const VARIANT& array);
  Elements(const Elements&) = delete;
  Elements& operator=(const Elements&) = delete;
  ~Elements() { SafeArrayUnaccessData(array_); }

  VARIANT* begin() const { return first_; }
  VARIANT* end() const { return first_ + count_; }
  std::size_t size() const { return count_; }

 private:
  SAFEARRAY* array_;
  VARIANT* first_ = nullptr;
  std::size_t count_ = 1;
};

}  // namespace com
