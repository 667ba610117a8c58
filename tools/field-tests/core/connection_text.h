// Connection strings: what may be shown of them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace field_tests {

// Its driver or provider; every other value as "...".
std::string Presentable(std::string_view connection);

// What must not be seen: every other value, and the parts of it that a message may name alone.
std::vector<std::string> SecretsIn(std::string_view connection);

// Takes texts out of everything that is shown or written, in upper and lower case (of ASCII).
class Scrubber {
 public:
  // A text of fewer than five characters is hidden where it is a whole word.
  void Hide(const std::string& text, const std::string& replacement);
  std::string operator()(std::string text) const;

 private:
  struct Hidden {
    std::string text;
    std::string replacement;
  };
  // The longest first.
  std::vector<Hidden> hidden_;
};

}  // namespace field_tests
