#include "field-tests/core/text.h"

#include <algorithm>

namespace field_tests {

std::vector<std::string> LinesOf(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const auto end = text.find('\n');
    auto line = text.substr(0, end);
    if (line.ends_with('\r')) {
      line.remove_suffix(1);
    }
    lines.emplace_back(line);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return lines;
}

std::string Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) {
    return {};
  }
  return std::string(text.substr(first, text.find_last_not_of(kBlanks) - first + 1));
}

std::string Lower(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), [](char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
  });
  return lower;
}

void ReplaceAll(std::string& text, std::string_view from, std::string_view to) {
  for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

bool Matches(std::string_view pattern, std::string_view text) {
  const auto star = pattern.find('*');
  if (star == std::string_view::npos) {
    return pattern == text;
  }
  if (!text.starts_with(pattern.substr(0, star))) {
    return false;
  }
  const auto rest = pattern.substr(star + 1);
  for (auto from = star; from <= text.size(); ++from) {
    if (Matches(rest, text.substr(from))) {
      return true;
    }
  }
  return false;
}

bool HoldsUtf16(std::string_view bytes, std::u16string_view text) {
  std::string wanted;
  for (const char16_t unit : std::u16string(text) + u'\0') {
    wanted += static_cast<char>(unit & 0xFF);
    wanted += static_cast<char>(unit >> 8);
  }
  return bytes.find(wanted) != std::string_view::npos;
}

std::string Joined(const std::vector<std::string>& texts, std::string_view separator) {
  std::string all;
  for (const auto& text : texts) {
    if (!all.empty()) {
      all += separator;
    }
    all += text;
  }
  return all;
}

}  // namespace field_tests
