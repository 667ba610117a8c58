#include "automation/decimal.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace automation {
namespace {

constexpr std::size_t kMaxScale = 28;

// The 96-bit magnitude as three words, lowest first.
using Words = std::array<std::uint32_t, 3>;

Words WordsOf(const Decimal& decimal) {
  return {static_cast<std::uint32_t>(decimal.lo), static_cast<std::uint32_t>(decimal.lo >> 32),
          decimal.hi};
}

// words = words * 10 + digit; false when that needs more than 96 bits.
bool AppendDigit(Words& words, std::uint32_t digit) {
  std::uint64_t carry = digit;
  for (auto& word : words) {
    carry += static_cast<std::uint64_t>(word) * 10;
    word = static_cast<std::uint32_t>(carry);
    carry >>= 32;
  }
  return carry == 0;
}

// words = words / 10; the remainder is returned.
std::uint32_t TakeDigit(Words& words) {
  std::uint64_t remainder = 0;
  for (std::size_t i = words.size(); i-- > 0;) {
    const std::uint64_t part = (remainder << 32) | words.at(i);
    words.at(i) = static_cast<std::uint32_t>(part / 10);
    remainder = part % 10;
  }
  return static_cast<std::uint32_t>(remainder);
}

}  // namespace

double DoubleOf(const Decimal& decimal) {
  const double magnitude =
      std::ldexp(static_cast<double>(decimal.hi), 64) + static_cast<double>(decimal.lo);
  const double number = magnitude / std::pow(10.0, decimal.scale);
  return decimal.negative ? -number : number;
}

std::u16string DecimalText(const Decimal& decimal, char16_t decimalSeparator) {
  Words words = WordsOf(decimal);
  std::u16string reversed;
  for (std::size_t i = 0; words != Words{} || i <= decimal.scale; ++i) {
    if (decimal.scale != 0 && i == decimal.scale) {
      reversed.push_back(decimalSeparator);
    }
    reversed.push_back(static_cast<char16_t>(u'0' + TakeDigit(words)));
  }
  if (decimal.negative) {
    reversed.push_back(u'-');
  }
  return {reversed.rbegin(), reversed.rend()};
}

std::optional<Decimal> ParseDecimal(std::u16string_view text) {
  Decimal decimal;
  if (text.starts_with(u'-') || text.starts_with(u'+')) {
    decimal.negative = text.front() == u'-';
    text.remove_prefix(1);
  }
  const auto point = std::min(text.find(u'.'), text.size());
  const auto digits = std::u16string(text.substr(0, point)) +
                      std::u16string(text.substr(std::min(point + 1, text.size())));
  const std::size_t scale = digits.size() - point;
  Words words{};
  const bool fits = std::all_of(digits.begin(), digits.end(), [&](char16_t digit) {
    return digit >= u'0' && digit <= u'9' && AppendDigit(words, digit - u'0');
  });
  if (digits.empty() || !fits || scale > kMaxScale) {
    return std::nullopt;
  }
  decimal.lo = words[0] | static_cast<std::uint64_t>(words[1]) << 32;
  decimal.hi = words[2];
  decimal.scale = static_cast<std::uint8_t>(scale);
  return decimal;
}

Decimal DecimalOf(std::int64_t number) {
  const auto bits = static_cast<std::uint64_t>(number);
  return {.lo = number < 0 ? 0 - bits : bits, .negative = number < 0};
}

}  // namespace automation
