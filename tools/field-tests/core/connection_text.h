// Connection strings: what may be shown of them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace field_tests {

// Its driver, provider or data source; every other value as "...".
std::string Presentable(std::string_view connection);

// The values that must not be seen: passwords and user names.
std::vector<std::string> SecretsIn(std::string_view connection);

// Takes texts out of everything that is shown or written.
class Scrubber {
 public:
  // A text of fewer than three characters is ignored: it would be found in every word.
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
