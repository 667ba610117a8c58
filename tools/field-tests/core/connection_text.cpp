#include "field-tests/core/connection_text.h"

#include <algorithm>
#include <array>

#include "field-tests/core/text.h"

namespace field_tests {
namespace {

struct Part {
  std::string key;
  std::string value;  // without braces or quotation marks
};

constexpr auto kShown = std::to_array<std::string_view>({"driver", "provider", "dsn", "filedsn"});
constexpr auto kSecret = std::to_array<std::string_view>(
    {"pwd", "password", "jet oledb:database password", "uid", "user", "user id", "username"});

template <class List>
bool Has(const List& list, std::string_view key) {
  return std::find(list.begin(), list.end(), key) != list.end();
}

// Takes a value from the start of `text`: "{a;b}", "'a;b'", "\"a;b\"" or up to the next semicolon.
std::string TakeValue(std::string_view& text) {
  const auto blanks = std::min(text.find_first_not_of(' '), text.size());
  text.remove_prefix(blanks);
  const char open = text.empty() ? '\0' : text.front();
  const char close = open == '{' ? '}' : open;
  std::string value;
  if (open != '{' && open != '"' && open != '\'') {
    const auto end = std::min(text.find(';'), text.size());
    value = Trimmed(text.substr(0, end));
    text.remove_prefix(end);
  } else {
    text.remove_prefix(1);
    while (!text.empty()) {
      const char next = text.front();
      text.remove_prefix(1);
      if (next == close) {
        if (!text.starts_with(close)) {
          break;
        }
        text.remove_prefix(1);
      }
      value += next;
    }
    text.remove_prefix(std::min(text.find(';'), text.size()));
  }
  return value;
}

std::vector<Part> PartsOf(std::string_view connection) {
  std::vector<Part> parts;
  while (!connection.empty()) {
    const auto equals = connection.find_first_of("=;");
    const std::string key = Trimmed(connection.substr(0, equals));
    const bool hasValue = equals != std::string_view::npos && connection[equals] == '=';
    connection.remove_prefix(std::min(equals, connection.size() - 1) + 1);
    if (hasValue) {
      parts.push_back({.key = key, .value = TakeValue(connection)});
      connection.remove_prefix(connection.empty() ? 0 : 1);
    }
  }
  return parts;
}

}  // namespace

std::string Presentable(std::string_view connection) {
  std::string shown;
  for (const auto& part : PartsOf(connection)) {
    shown += (shown.empty() ? "" : "; ") + part.key + "=" +
             (Has(kShown, Lower(part.key)) ? part.value : "...");
  }
  return shown;
}

std::vector<std::string> SecretsIn(std::string_view connection) {
  std::vector<std::string> secrets;
  for (const auto& part : PartsOf(connection)) {
    if (Has(kSecret, Lower(part.key)) && !part.value.empty()) {
      secrets.push_back(part.value);
    }
  }
  return secrets;
}

void Scrubber::Hide(const std::string& text, const std::string& replacement) {
  constexpr std::size_t kShortest = 3;
  if (text.size() < kShortest) {
    return;
  }
  hidden_.push_back({.text = text, .replacement = replacement});
  std::stable_sort(hidden_.begin(), hidden_.end(), [](const Hidden& one, const Hidden& other) {
    return one.text.size() > other.text.size();
  });
}

std::string Scrubber::operator()(std::string text) const {
  for (const auto& each : hidden_) {
    ReplaceAll(text, each.text, each.replacement);
  }
  return text;
}

}  // namespace field_tests
