// Reading one result file, element by element, as its readers need it.
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

  // Code 0 when the file was loaded.
  platform::ParseError Error() const;

  // The first element of that name, put into `variable`, which keeps its value when there is no
  // such element. Kept: the link program leaves out what it has nothing to say about. Error 13 for
  // text where a number is due, 6 for a number out of range. Returns whether the element is there.
  bool Read(std::u16string_view tag, double& variable) const;
  bool Read(std::u16string_view tag, std::int32_t& variable) const;
  bool Read(std::u16string_view tag, std::u16string& variable) const;

 private:
  std::unique_ptr<platform::ResultDocument> document_;
};

}  // namespace exchange
