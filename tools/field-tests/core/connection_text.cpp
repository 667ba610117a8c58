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

constexpr auto kShown = std::to_array<std::string_view>({"driver", "provider"});
// Values that say nothing about anyone, and are in many texts.
constexpr auto kCommon =
    std::to_array<std::string_view>({"yes", "no", "true", "false", "sspi", "localhost", "(local)"});
// Shorter texts are in many words, so they are hidden as whole words only.
constexpr std::size_t kShort = 5;

// Bytes of letters that are not ASCII are.
bool IsOfAWord(char letter) {
  return (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'Z') ||
         (letter >= 'a' && letter <= 'z') || letter < 0;
}

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

bool IsCommon(std::string_view text) {
  constexpr std::size_t kFewDigits = 3;
  const bool isNumber = std::all_of(text.begin(), text.end(),
                                    [](char letter) { return letter >= '0' && letter <= '9'; });
  const bool isPunctuation = std::none_of(text.begin(), text.end(), IsOfAWord);
  return Has(kCommon, Lower(text)) || isPunctuation || (isNumber && text.size() < kFewDigits);
}

// A path's file name; the parts of a server's name such as tcp:server\instance,1433.
std::vector<std::string> PiecesOf(const std::string& value) {
  std::vector<std::string> pieces(1);
  for (const char letter : value) {
    if (letter == '\\' || letter == '/' || letter == ',' || letter == ':') {
      pieces.emplace_back();
    } else {
      pieces.back() += letter;
    }
  }
  const bool isOnADrive = value.size() > 1 && value[1] == ':';
  return isOnADrive ? std::vector{pieces.back()} : pieces;
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
    if (Has(kShown, Lower(part.key))) {
      continue;
    }
    auto texts = PiecesOf(part.value);
    texts.push_back(part.value);
    for (const auto& text : texts) {
      if (!IsCommon(text) && !Has(secrets, text)) {
        secrets.push_back(text);
      }
    }
  }
  return secrets;
}

namespace {

bool IsWholeWord(std::string_view text, std::size_t from, std::size_t to) {
  return (from == 0 || !IsOfAWord(text[from - 1])) && (to == text.size() || !IsOfAWord(text[to]));
}

void Replace(std::string& text, const std::string& lower, const std::string& replacement) {
  for (auto at = Lower(text).find(lower); at != std::string::npos;) {
    const bool isIt = lower.size() >= kShort || IsWholeWord(text, at, at + lower.size());
    if (isIt) {
      text.replace(at, lower.size(), replacement);
    }
    at = Lower(text).find(lower, at + (isIt ? replacement.size() : 1));
  }
}

}  // namespace

void Scrubber::Hide(const std::string& text, const std::string& replacement) {
  if (text.empty()) {
    return;
  }
  hidden_.push_back({.text = text, .replacement = replacement});
  std::stable_sort(hidden_.begin(), hidden_.end(), [](const Hidden& one, const Hidden& other) {
    return one.text.size() > other.text.size();
  });
}

std::string Scrubber::operator()(std::string text) const {
  for (const auto& each : hidden_) {
    Replace(text, Lower(each.text), each.replacement);
  }
  return text;
}

}  // namespace field_tests
