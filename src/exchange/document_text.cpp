#include "exchange/document_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace exchange {
namespace {

constexpr char32_t kLastLatin1 = 0xFF;
constexpr char32_t kReplacement = 0xFFFD;

void AppendReference(std::string& bytes, char32_t point) {
  bytes.append("&#").append(std::to_string(std::uint32_t{point})).push_back(';');
}

bool IsHighSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}
bool IsLowSurrogate(char16_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

// The character beyond Latin-1 that starts at `at`. Moves `at` to its last unit.
char32_t WidePoint(std::u16string_view text, std::size_t& at) {
  const char16_t unit = text[at];
  if (IsHighSurrogate(unit) && at + 1 < text.size() && IsLowSurrogate(text[at + 1])) {
    return 0x10000 + (static_cast<char32_t>(unit - 0xD800) << 10) + (text[++at] - 0xDC00U);
  }
  return IsHighSurrogate(unit) || IsLowSurrogate(unit) || unit >= 0xFFFE ? kReplacement : unit;
}

// Appends a character that is not plain (see below); omits the other control characters.
void AppendSpecial(std::string& bytes, char16_t unit) {
  switch (unit) {
    case u'<':
      bytes.append("&lt;");
      return;
    case u'>':
      bytes.append("&gt;");
      return;
    case u'&':
      bytes.append("&amp;");
      return;
    case u'\r':
      bytes.append("&#13;");
      return;
    default:
      return;
  }
}

// The characters that are written unchanged.
constexpr auto kPlain = [] {
  std::array<bool, kLastLatin1 + 1> plain{};
  std::fill(plain.begin() + u' ', plain.end(), true);
  for (const char16_t special : {u'<', u'>', u'&'}) {
    plain[special] = false;
  }
  plain[u'\n'] = plain[u'\t'] = true;
  return plain;
}();

// Appends the text's leading plain characters in one go, since nearly all are plain. Returns their
// number.
std::size_t AppendPlain(std::string& bytes, std::u16string_view text) {
  const auto* const end = std::find_if_not(
      text.begin(), text.end(), [](char16_t unit) { return unit < kPlain.size() && kPlain[unit]; });
  const auto start = static_cast<std::ptrdiff_t>(bytes.size());
  const auto length = static_cast<std::size_t>(end - text.begin());
  bytes.resize(bytes.size() + length);
  std::transform(text.begin(), end, bytes.begin() + start,
                 [](char16_t unit) { return static_cast<char>(unit); });
  return length;
}

}  // namespace

bool AppendText(std::string& bytes, std::u16string_view text) {
  for (std::size_t at = AppendPlain(bytes, text); at < text.size();
       at += AppendPlain(bytes, text.substr(at))) {
    if (text[at] == u'\0') {
      return false;
    }
    if (text[at] <= kLastLatin1) {
      AppendSpecial(bytes, text[at]);
    } else {
      AppendReference(bytes, WidePoint(text, at));
    }
    ++at;
  }
  return true;
}

}  // namespace exchange
