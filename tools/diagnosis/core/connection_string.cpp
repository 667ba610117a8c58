#include "diagnosis/core/connection_string.h"

#include <algorithm>
#include <vector>

#include "automation/text.h"

namespace diagnosis {
namespace {

constexpr const char16_t* kMask = u"***";

bool Encloses(const std::u16string& value, char16_t first, char16_t last) {
  return value.size() >= 2 && value.front() == first && value.back() == last;
}

// As written, without the quotes or braces around it, and with those inside it no longer doubled.
void AddValue(const std::u16string& value, std::vector<std::u16string>& values) {
  const std::u16string trimmed = automation::Trim(value);
  for (const auto& [first, last] :
       {std::pair(u'{', u'}'), std::pair(u'"', u'"'), std::pair(u'\'', u'\'')}) {
    if (Encloses(trimmed, first, last)) {
      const std::u16string inside = trimmed.substr(1, trimmed.size() - 2);
      values.push_back(inside);
      values.push_back(
          automation::ReplaceNoCase(inside, std::u16string(2, last), std::u16string(1, last)));
    }
  }
  values.push_back(trimmed);
}

// Longest first, so that no part of a value is left when another is its beginning. A value may hold
// separators inside quotes, so the whole rest after each "=" counts as well.
std::vector<std::u16string> ValuesOf(const std::u16string& connection) {
  std::vector<std::u16string> values;
  AddValue(connection, values);
  for (std::size_t at = connection.find(u'='); at != std::u16string::npos;
       at = connection.find(u'=', at + 1)) {
    const std::u16string rest = connection.substr(at + 1);
    for (std::size_t end = rest.find(u';');; end = rest.find(u';', end + 1)) {
      AddValue(rest.substr(0, end), values);
      if (end == std::u16string::npos) {
        break;
      }
    }
  }
  std::sort(values.begin(), values.end(),
            [](const auto& one, const auto& other) { return one.size() > other.size(); });
  return values;
}

}  // namespace

std::u16string WithoutValuesOf(const std::u16string& connection, const std::u16string& text) {
  std::u16string masked = text;
  for (const std::u16string& value : ValuesOf(connection)) {
    if (!value.empty()) {
      masked = automation::ReplaceNoCase(masked, value, kMask);
    }
  }
  return masked;
}

}  // namespace diagnosis
