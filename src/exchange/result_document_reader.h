// Reads a result file element by element.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/result_document.h"

namespace exchange {

class ResultDocumentReader {
 public:
  explicit ResultDocumentReader(const std::u16string& path);

  // Its code is 0 if the file was loaded.
  platform::ParseError Error() const;

  // Stores the first element of that name in `variable`; without one, `variable` keeps its value.
  // Kept: the link program omits elements that it has no value for. Error 13 for text where a
  // number is expected, 6 for a number out of range. Returns whether the element exists.
  bool Read(std::u16string_view tag, double& variable) const;
  bool Read(std::u16string_view tag, std::int32_t& variable) const;
  bool Read(std::u16string_view tag, std::u16string& variable) const;

 private:
  std::unique_ptr<platform::ResultDocument> document_;
};

}  // namespace exchange
