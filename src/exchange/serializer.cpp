#include "exchange/serializer.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace exchange {
namespace {

constexpr std::string_view kDeclaration = "<?xml version='1.0' encoding='ISO-8859-1'?>\n";
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
void AppendSpecial(std::string& bytes, char16_t unit, bool inAttribute) {
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
    case u'"':
      bytes.append(inAttribute ? "&quot;" : "\"");
      return;
    case u'\n':
      bytes.append(inAttribute ? "&#10;" : "\n");
      return;
    case u'\t':
      bytes.append(inAttribute ? "&#9;" : "\t");
      return;
    default:
      return;
  }
}

// The characters that are written unchanged, in texts and in attributes.
constexpr auto kPlain = [] {
  std::array<bool, kLastLatin1 + 1> plain{};
  std::fill(plain.begin() + u' ', plain.end(), true);
  for (const char16_t special : {u'<', u'>', u'&', u'"'}) {
    plain[special] = false;
  }
  return plain;
}();

void AppendNarrow(std::string& bytes, std::u16string_view latin1) {
  const auto start = static_cast<std::ptrdiff_t>(bytes.size());
  bytes.resize(bytes.size() + latin1.size());
  std::transform(latin1.begin(), latin1.end(), bytes.begin() + start,
                 [](char16_t unit) { return static_cast<char>(unit); });
}

// Appends the text's leading plain characters in one go, since nearly all are plain. Returns their
// number.
std::size_t AppendPlain(std::string& bytes, std::u16string_view text) {
  const auto* const end = std::find_if_not(
      text.begin(), text.end(), [](char16_t unit) { return unit < kPlain.size() && kPlain[unit]; });
  const auto length = static_cast<std::size_t>(end - text.begin());
  AppendNarrow(bytes, text.substr(0, length));
  return length;
}

void AppendText(std::string& bytes, std::u16string_view text, bool inAttribute) {
  // The DOM ends a text at a NUL.
  text = text.substr(0, text.find(u'\0'));
  for (std::size_t at = AppendPlain(bytes, text); at < text.size();
       at += AppendPlain(bytes, text.substr(at))) {
    if (text[at] <= kLastLatin1) {
      AppendSpecial(bytes, text[at], inAttribute);
    } else {
      AppendReference(bytes, WidePoint(text, at));
    }
    ++at;
  }
}

void AppendElement(std::string& bytes, const Element& element) {
  bytes.push_back('<');
  const std::size_t name = bytes.size();
  AppendNarrow(bytes, element.name());
  for (const auto& attribute : element.attributes()) {
    bytes.push_back(' ');
    AppendNarrow(bytes, attribute.name);
    bytes.append("=\"");
    AppendText(bytes, attribute.value, true);
    bytes.push_back('"');
  }
  const std::size_t end = bytes.size();
  bytes.push_back('>');
  AppendText(bytes, element.text(), false);
  for (const auto& child : element.children()) {
    AppendElement(bytes, child);
  }
  if (bytes.size() == end + 1) {
    bytes.insert(end, 1, '/');
    return;
  }
  bytes.append("</").append(bytes, name, element.name().size()).push_back('>');
}

}  // namespace

std::string Serialize(const Element& root) {
  std::string bytes(kDeclaration);
  AppendElement(bytes, root);
  bytes.push_back('\n');
  return bytes;
}

}  // namespace exchange
