#include "parser_limits/parser_limits.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "automation/text.h"

namespace parser_limits {
namespace {

// A result has a dozen elements; one that includes its whole form has a few thousand elements and
// texts. Each costs Wine's parser up to nine microseconds and 130 bytes, however few bytes of the
// file it takes.
constexpr std::size_t kMostParts = 100'000;
// Attributes are compared with each other, and names with the namespaces among them.
constexpr std::size_t kMostAttributes = 1'000;
constexpr std::size_t kMostLevels = 256;
// When a reference, a line end or a buffer end interrupts a text, Wine's parser searches the
// attributes of all enclosing elements. The search itself costs as much as twenty attributes. This
// many lookups take half a second.
constexpr std::uint64_t kMostLookups = 100'000'000;
constexpr std::uint64_t kLookupsAtLeast = 20;
constexpr std::uint64_t kBuffer = 300;
// Three bytes that are not a character in UTF-8 may be text in another encoding.
constexpr std::size_t kMostOddities = 10'000;

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kNoName = " \t\r\n/>=<'\"&";

bool IsControl(char character) {
  return static_cast<unsigned char>(character) < 0x20 && kBlanks.find(character) == kBlanks.npos;
}

bool IsCharacter(std::uint32_t point) {
  return point < 0x20 ? point == '\t' || point == '\n' || point == '\r'
                      : point < 0xD800 || (point >= 0xE000 && point < 0xFFFE) ||
                            (point >= 0x10000 && point < 0x110000);
}

// Whether a reference such as "#65" or "#x41" stands for a character.
bool IsCharacterNumber(std::string_view number) {
  const std::uint32_t base = number.starts_with("#x") ? 16 : 10;
  number.remove_prefix(base == 16 ? 2 : 1);
  std::uint32_t point = 0;
  for (const char digit : number) {
    const bool letter =
        base == 16 && ((digit >= 'a' && digit <= 'f') || (digit >= 'A' && digit <= 'F'));
    if (!letter && (digit < '0' || digit > '9')) {
      return false;
    }
    point = point * base + static_cast<std::uint32_t>(letter ? (digit & 0x0F) + 9 : digit - '0');
    if (point >= 0x110000) {
      return false;
    }
  }
  return !number.empty() && IsCharacter(point);
}

// Without declarations, no other references are valid.
bool IsReference(std::string_view name) {
  constexpr auto kNames = std::to_array<std::string_view>({"amp", "lt", "gt", "quot", "apos"});
  return name.starts_with('#') ? IsCharacterNumber(name)
                               : std::ranges::find(kNames, name) != kNames.end();
}

// Scans the document once and stops at the first markup that is malformed or exceeds a limit. Names
// are neither validated nor matched: what is left to the parser costs it little.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : buffers_(text.size() / kBuffer), rest_(text) {}

  bool IsFit() {
    while (!rest_.empty()) {
      if (!PassPart() || !IsWithinLimits()) {
        return false;
      }
    }
    // A document without an element may be in an encoding that cannot be scanned.
    return levels_ > 0 && level_ == 0;
  }

 private:
  bool IsWithinLimits() const {
    const std::uint64_t lookups =
        (interruptions_ + buffers_) * (attributes_ + levels_ + kLookupsAtLeast);
    return parts_ <= kMostParts && attributes_ <= kMostAttributes && levels_ <= kMostLevels &&
           lookups <= kMostLookups && oddities_ <= kMostOddities;
  }

  bool PassPart() {
    if (rest_.front() != '<') {
      ++parts_;
      const std::string_view text = TakeUntil("<");
      return text.find("]]>") == text.npos && AreCharacters(text) && AreReferences(text);
    }
    if (Take("</")) {
      return PassEndTag();
    }
    ++parts_;
    if (Take("<?")) {
      return AreCharacters(TakeUntil("?>")) && Take("?>");
    }
    if (Take("<![CDATA[")) {
      return AreCharacters(TakeUntil("]]>")) && Take("]]>");
    }
    if (Take("<!--")) {
      return AreCharacters(TakeUntil("--")) && Take("-->");
    }
    if (Take("<!DOCTYPE")) {
      return PassDocumentType();
    }
    return Take("<") && PassStartTag();
  }

  // Accepts one, before the root element, without declarations of its own ("[").
  bool PassDocumentType() {
    const bool first = !std::exchange(hasDocumentType_, true) && levels_ == 0;
    const bool named = TakeBlanks() && TakeName("[");
    const bool apart = TakeBlanks();
    const bool inOrder = Take("SYSTEM")   ? apart && PassLiteral()
                         : Take("PUBLIC") ? apart && PassLiteral() && PassLiteral()
                                          : true;
    TakeBlanks();
    return first && named && inOrder && Take(">");
  }

  bool PassLiteral() {
    const bool apart = TakeBlanks();
    const std::string_view quote = TakeQuote();
    return apart && !quote.empty() && AreCharacters(TakeUntil(quote)) && Take(quote);
  }

  bool PassEndTag() {
    const bool named = TakeName();
    TakeBlanks();
    return named && Take(">") && level_-- > 0;
  }

  bool PassStartTag() {
    if (!TakeName()) {
      return false;
    }
    levels_ = std::max(levels_, level_ + 1);
    for (;;) {
      const bool apart = TakeBlanks();
      if (Take("/>")) {
        return true;
      }
      if (Take(">")) {
        ++level_;
        return true;
      }
      if (!apart || !PassAttribute()) {
        return false;
      }
    }
  }

  bool PassAttribute() {
    ++attributes_;
    const bool named = TakeName();
    TakeBlanks();
    if (!named || !Take("=")) {
      return false;
    }
    TakeBlanks();
    const std::string_view quote = TakeQuote();
    if (quote.empty()) {
      return false;
    }
    const std::string_view value = TakeUntil(quote);
    return value.find('<') == value.npos && AreCharacters(value) && AreReferences(value) &&
           Take(quote);
  }

  // Counts line ends and possible non-characters.
  bool AreCharacters(std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
      const auto byte = static_cast<unsigned char>(text[at]);
      if (byte < 0x20) {
        if (IsControl(text[at])) {
          return false;
        }
        interruptions_ += byte == '\r' ? 1 : 0;
      } else if (byte == 0xED || byte == 0xEF) {
        // Surrogates, U+FFFE and U+FFFF.
        const std::string_view next = text.substr(at + 1, 2);
        const bool surrogate = byte == 0xED && !next.empty() && next[0] >= '\xA0';
        oddities_ +=
            surrogate || (byte == 0xEF && (next == "\xBF\xBE" || next == "\xBF\xBF")) ? 1 : 0;
      }
    }
    return true;
  }

  bool AreReferences(std::string_view text) {
    for (auto start = text.find('&'); start != text.npos; start = text.find('&', start + 1)) {
      ++interruptions_;
      const auto end = text.find(';', start);
      if (end == text.npos || !IsReference(text.substr(start + 1, end - start - 1))) {
        return false;
      }
    }
    return true;
  }

  bool Take(std::string_view expected) {
    const bool there = rest_.starts_with(expected);
    rest_.remove_prefix(there ? expected.size() : 0);
    return there;
  }

  std::string_view TakeUntil(std::string_view end) {
    const std::string_view taken = rest_.substr(0, rest_.find(end));
    rest_.remove_prefix(taken.size());
    return taken;
  }

  // Empty when there is none.
  std::string_view TakeQuote() {
    const std::string_view quote = rest_.substr(0, 1);
    return Take("\"") || Take("'") ? quote : std::string_view();
  }

  // A name ends before any of `excluded` and before any character that names cannot contain.
  bool TakeName(std::string_view excluded = {}) {
    const auto* const end = std::ranges::find_if(rest_, [&](char character) {
      return kNoName.find(character) != kNoName.npos || excluded.find(character) != excluded.npos ||
             IsControl(character);
    });
    const auto length = static_cast<std::size_t>(end - rest_.begin());
    rest_.remove_prefix(length);
    return length > 0;
  }

  bool TakeBlanks() {
    const std::size_t length = std::min(rest_.find_first_not_of(kBlanks), rest_.size());
    rest_.remove_prefix(length);
    return length > 0;
  }

  std::uint64_t interruptions_ = 0;
  std::uint64_t buffers_;
  std::size_t parts_ = 0;
  std::size_t attributes_ = 0;
  std::size_t level_ = 0;
  std::size_t levels_ = 0;
  std::size_t oddities_ = 0;
  bool hasDocumentType_ = false;
  std::string_view rest_;
};

}  // namespace

bool IsFitToParse(std::string_view bytes) {
  using std::string_view_literals::operator""sv;
  const bool lowFirst = bytes.starts_with("\xFF\xFE"sv) || bytes.starts_with("<\0"sv);
  const bool highFirst = bytes.starts_with("\xFE\xFF"sv) || bytes.starts_with("\0<"sv);
  if (!lowFirst && !highFirst) {
    return Scanner(bytes).IsFit();
  }
  std::u16string units(bytes.size() / 2, u'\0');
  for (std::size_t at = 0; at < units.size(); ++at) {
    const auto byte = [&](std::size_t place) { return static_cast<unsigned char>(bytes[place]); };
    units[at] = static_cast<char16_t>(byte(2 * at + (lowFirst ? 0 : 1)) |
                                      byte(2 * at + (lowFirst ? 1 : 0)) << 8);
  }
  return Scanner(automation::ToUtf8(units)).IsFit();
}

}  // namespace parser_limits
