#include "automation/text.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "automation/automation_error.h"

namespace automation {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

void AppendUtf16(std::u16string& text, char32_t point) {
  if (point < 0x10000) {
    text.push_back(static_cast<char16_t>(point));
    return;
  }
  point -= 0x10000;
  text.push_back(static_cast<char16_t>(0xD800 + (point >> 10)));
  text.push_back(static_cast<char16_t>(0xDC00 + (point & 0x3FF)));
}

void AppendUtf8(std::string& text, char32_t point) {
  const auto tail = [&](int shift) {
    text.push_back(static_cast<char>(0x80 | ((point >> shift) & 0x3F)));
  };
  if (point < 0x80) {
    text.push_back(static_cast<char>(point));
  } else if (point < 0x800) {
    text.push_back(static_cast<char>(0xC0 | (point >> 6)));
    tail(0);
  } else if (point < 0x10000) {
    text.push_back(static_cast<char>(0xE0 | (point >> 12)));
    tail(6);
    tail(0);
  } else {
    text.push_back(static_cast<char>(0xF0 | (point >> 18)));
    tail(12);
    tail(6);
    tail(0);
  }
}

// Reads the code point at `position` and advances past it; U+FFFD (and one byte on) where the bytes
// are not shortest-form UTF-8.
char32_t NextPoint(std::string_view text, std::size_t& position) {
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned lead = byte(position++);
  if (lead < 0x80) {
    return lead;
  }
  const std::size_t tails = lead >= 0xF0 ? 3U : lead >= 0xE0 ? 2U : 1U;
  if (lead < 0xC2 || lead > 0xF4 || text.size() - position < tails) {
    return kReplacement;
  }
  char32_t point = lead & (0x3FU >> tails);
  for (std::size_t i = 0; i < tails; ++i) {
    if ((byte(position + i) & 0xC0U) != 0x80) {
      return kReplacement;
    }
    point = (point << 6) | (byte(position + i) & 0x3FU);
  }
  constexpr auto smallest = std::to_array<char32_t>({0x80, 0x800, 0x10000});
  if (point < smallest[tails - 1] || point > 0x10FFFF || (point >= 0xD800 && point < 0xE000)) {
    return kReplacement;
  }
  position += tails;
  return point;
}

void RequireLength(std::int32_t length) {
  if (length < 0) {
    throw AutomationError(RuntimeError::InvalidProcedureCall);
  }
}

void RequirePosition(std::int32_t start) {
  if (start < 1) {
    throw AutomationError(RuntimeError::InvalidProcedureCall);
  }
}

char16_t UpperLetter(char16_t letter) {
  const bool ascii = letter >= u'a' && letter <= u'z';
  const bool latin1 = letter >= 0xE0 && letter <= 0xFE && letter != 0xF7;
  return ascii || latin1 ? static_cast<char16_t>(letter - 0x20) : letter;
}

char16_t UpperAscii(char16_t letter) {
  return letter >= u'a' && letter <= u'z' ? static_cast<char16_t>(letter - 0x20) : letter;
}

}  // namespace

std::u16string FromUtf8(std::string_view text) {
  std::u16string result;
  result.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    AppendUtf16(result, NextPoint(text, position));
  }
  return result;
}

std::string ToUtf8(std::u16string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t point = text[i];
    if (point >= 0xD800 && point < 0xE000) {
      const bool pair =
          point < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000;
      point = pair ? 0x10000 + ((point - 0xD800) << 10) + (text[++i] - 0xDC00U) : kReplacement;
    }
    AppendUtf8(result, point);
  }
  return result;
}

std::u16string Decimal10(std::int64_t number) {
  const std::string digits = std::to_string(number);
  return {digits.begin(), digits.end()};
}

std::u16string Left(std::u16string_view text, std::int32_t length) {
  RequireLength(length);
  return std::u16string(text.substr(0, static_cast<std::size_t>(length)));
}

std::u16string Right(std::u16string_view text, std::int32_t length) {
  RequireLength(length);
  const std::size_t taken = std::min(text.size(), static_cast<std::size_t>(length));
  return std::u16string(text.substr(text.size() - taken));
}

std::u16string Mid(std::u16string_view text, std::int32_t start, std::int32_t length) {
  RequirePosition(start);
  RequireLength(length);
  const auto from = std::min(text.size(), static_cast<std::size_t>(start) - 1);
  return std::u16string(text.substr(from, static_cast<std::size_t>(length)));
}

std::u16string Mid(std::u16string_view text, std::int32_t start) {
  return Mid(text, start, static_cast<std::int32_t>(text.size()));
}

std::int32_t InStr(std::int32_t start, std::u16string_view text, std::u16string_view part) {
  RequirePosition(start);
  const auto found = text.find(part, static_cast<std::size_t>(start) - 1);
  const bool none = found == std::u16string_view::npos || text.empty();
  return none ? 0 : static_cast<std::int32_t>(found) + 1;
}

std::vector<std::u16string> Split(std::u16string_view text, char16_t separator) {
  if (text.empty()) {
    return {};
  }
  std::vector<std::u16string> pieces;
  for (std::size_t from = 0;;) {
    const std::size_t end = text.find(separator, from);
    pieces.emplace_back(text.substr(from, end - from));
    if (end == std::u16string_view::npos) {
      return pieces;
    }
    from = end + 1;
  }
}

std::u16string Trim(std::u16string_view text) {
  const auto first = text.find_first_not_of(u' ');
  if (first == std::u16string_view::npos) {
    return {};
  }
  return std::u16string(text.substr(first, text.find_last_not_of(u' ') - first + 1));
}

std::u16string ReplaceNoCase(std::u16string_view text, std::u16string_view part,
                             std::u16string_view replacement) {
  std::u16string result;
  while (!part.empty()) {
    const auto found =
        std::search(text.begin(), text.end(), part.begin(), part.end(),
                    [](char16_t a, char16_t b) { return UpperAscii(a) == UpperAscii(b); });
    if (found == text.end()) {
      break;
    }
    const auto before = static_cast<std::size_t>(found - text.begin());
    result.append(text.substr(0, before)).append(replacement);
    text.remove_prefix(before + part.size());
  }
  return result.append(text);
}

std::u16string UCase(std::u16string_view text) {
  std::u16string result;
  result.reserve(text.size());
  std::transform(text.begin(), text.end(), std::back_inserter(result), UpperLetter);
  return result;
}

bool EqualsNoCase(std::u16string_view left, std::u16string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char16_t a, char16_t b) { return UpperLetter(a) == UpperLetter(b); });
}

}  // namespace automation
