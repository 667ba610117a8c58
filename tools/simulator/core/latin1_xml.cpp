#include "simulator/core/latin1_xml.h"

#include <optional>

#include "automation/text.h"
#include "simulator/core/problem.h"

namespace simulator {
namespace {

bool IsHighSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}
bool IsLowSurrogate(char32_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

// The character at `position`, which moves past it; nothing for one that XML forbids.
std::optional<char32_t> NextCharacter(std::u16string_view text, std::size_t& position) {
  const char32_t first = text[position++];
  if (IsHighSurrogate(first) && position < text.size() && IsLowSurrogate(text[position])) {
    const char32_t second = text[position++];
    return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
  }
  const bool control = first < 0x20 && first != '\t' && first != '\n' && first != '\r';
  const bool forbidden = control || IsHighSurrogate(first) || IsLowSurrogate(first) ||
                         first == 0xFFFE || first == 0xFFFF;
  return forbidden ? std::nullopt : std::optional(first);
}

void AppendCharacter(std::string& bytes, char32_t character) {
  switch (character) {
    case '&':
      bytes += "&amp;";
      return;
    case '<':
      bytes += "&lt;";
      return;
    case '>':
      bytes += "&gt;";
      return;
    default:
      break;
  }
  // A bare carriage return would be read back as a line feed, and readers of ISO-8859-1 differ over
  // 7F to 9F.
  const bool plain = character != '\r' && (character < 0x7F || character > 0x9F);
  if (plain && character <= 0xFF) {
    bytes.push_back(static_cast<char>(character));
  } else {
    bytes += "&#" + std::to_string(static_cast<std::uint32_t>(character)) + ";";
  }
}

}  // namespace

void AppendElement(std::string& bytes, const char* name, std::u16string_view text) {
  const std::string tag = name;
  bytes += "<" + tag + ">";
  for (std::size_t position = 0; position < text.size();) {
    const auto character = NextCharacter(text, position);
    if (!character) {
      throw Problem(automation::FromUtf8(tag) +
                    u" innehåller ett tecken som inte får finnas i XML (plats " +
                    automation::Decimal10(static_cast<std::int64_t>(position)) + u").");
    }
    AppendCharacter(bytes, *character);
  }
  bytes += "</" + tag + ">\r\n";
}

}  // namespace simulator
