#include "odbc/column_value.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <utility>

#include "automation/conversion.h"
#include "automation/date.h"
#include "automation/decimal.h"
#include "automation/text.h"

namespace odbc {
namespace {

using automation::Currency;
using automation::Date;
using automation::DateParts;
using automation::Decimal;
using automation::Value;

constexpr int kMaxScale = 28;
constexpr int kCurrencyScale = 4;

bool IsDigit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}

// All of `text` as a number, in the form that the C locale reads.
template <class Number>
std::optional<Number> Parse(std::u16string_view text) {
  const std::string plain = automation::ToUtf8(text);
  const char* const end = plain.data() + plain.size();
  Number number{};
  const auto [stop, error] = std::from_chars(plain.data(), end, number);
  return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

// A decimal number's digits without the point, and how many of them follow it.
struct Digits {
  std::u16string digits;
  int scale = 0;
  bool negative = false;
};

std::optional<Digits> ParseDigits(std::u16string_view text) {
  Digits number;
  if (!text.empty() && (text.front() == u'-' || text.front() == u'+')) {
    number.negative = text.front() == u'-';
    text.remove_prefix(1);
  }
  const auto exponentMark = text.find_first_of(u"eE");
  int exponent = 0;
  if (exponentMark != std::u16string_view::npos) {
    auto exponentText = text.substr(exponentMark + 1);
    if (exponentText.starts_with(u'+')) {
      exponentText.remove_prefix(1);
    }
    const auto parsed = Parse<std::int16_t>(exponentText);
    if (!parsed) {
      return std::nullopt;
    }
    exponent = *parsed;
    text = text.substr(0, exponentMark);
  }
  const auto point = text.find(u'.');
  number.digits = text.substr(0, point);
  if (point != std::u16string_view::npos) {
    number.digits += text.substr(point + 1);
    number.scale = static_cast<int>(text.size() - point - 1);
  }
  number.scale -= exponent;
  const bool wellFormed =
      !number.digits.empty() && std::all_of(number.digits.begin(), number.digits.end(), IsDigit);
  return wellFormed ? std::optional(number) : std::nullopt;
}

// Drops the last digit, rounding half away from zero.
void RoundOffLast(Digits& number) {
  const bool up = number.digits.back() >= u'5';
  number.digits.pop_back();
  --number.scale;
  if (!up) {
    return;
  }
  auto digit = number.digits.rbegin();
  while (digit != number.digits.rend() && *digit == u'9') {
    *digit++ = u'0';
  }
  if (digit == number.digits.rend()) {
    number.digits.insert(number.digits.begin(), u'1');
  } else {
    ++*digit;
  }
}

// No column holds a number with more digits than this before or after the point.
constexpr int kMaxDigits = 40;

// Rounds the number to at most `scale` decimals.
void LimitScale(Digits& number, int scale) {
  while (number.scale > scale && !number.digits.empty()) {
    RoundOffLast(number);
  }
  if (number.digits.empty()) {
    number.digits = u"0";
    number.scale = 0;
  }
}

// Replaces an exponent with zeros: the scale is then neither negative nor more than the digits.
bool SpellOut(Digits& number) {
  if (number.scale < -kMaxDigits) {
    return false;
  }
  for (; number.scale < 0; ++number.scale) {
    number.digits.push_back(u'0');
  }
  LimitScale(number, kMaxDigits);
  const auto scale = static_cast<std::size_t>(number.scale);
  if (scale >= number.digits.size()) {
    number.digits.insert(0, scale + 1 - number.digits.size(), u'0');
  }
  return true;
}

std::u16string PlainText(const Digits& number) {
  std::u16string text = (number.negative ? u"-" : u"") + number.digits;
  if (number.scale > 0) {
    text.insert(text.size() - static_cast<std::size_t>(number.scale), 1, u'.');
  }
  return text;
}

// Rounded to the decimals that 96 bits hold.
std::optional<Decimal> ToDecimal(Digits number) {
  if (!SpellOut(number)) {
    return std::nullopt;
  }
  LimitScale(number, kMaxScale);
  auto decimal = automation::ParseDecimal(PlainText(number));
  while (!decimal && number.scale > 0) {
    RoundOffLast(number);
    decimal = automation::ParseDecimal(PlainText(number));
  }
  return decimal;
}

std::optional<Currency> ToCurrency(Digits number) {
  if (!SpellOut(number)) {
    return std::nullopt;
  }
  LimitScale(number, kCurrencyScale);
  number.digits.append(static_cast<std::size_t>(kCurrencyScale - number.scale), u'0');
  const auto amount = Parse<std::int64_t>((number.negative ? u"-" : u"") + number.digits);
  return amount ? std::optional(Currency{*amount}) : std::nullopt;
}

// `text` at `position`, as a number of exactly `length` digits.
std::optional<int> NumberAt(std::u16string_view text, std::size_t position, std::size_t length) {
  if (text.size() < position + length) {
    return std::nullopt;
  }
  const auto digits = text.substr(position, length);
  return std::all_of(digits.begin(), digits.end(), IsDigit) ? Parse<int>(digits) : std::nullopt;
}

bool HasAt(std::u16string_view text, std::size_t position, char16_t unit) {
  return position < text.size() && text[position] == unit;
}

constexpr std::size_t kDateLength = 10;  // yyyy-mm-dd, mm-dd-yyyy

std::optional<DateParts> ParseDay(std::u16string_view text) {
  struct Places {
    std::size_t year, month, day, firstDash, secondDash;
  };
  constexpr std::array kForms = {Places{0, 5, 8, 4, 7}, Places{6, 0, 3, 2, 5}};
  for (const auto& form : kForms) {
    const auto year = NumberAt(text, form.year, 4);
    const auto month = NumberAt(text, form.month, 2);
    const auto day = NumberAt(text, form.day, 2);
    if (year && month && day && HasAt(text, form.firstDash, u'-') &&
        HasAt(text, form.secondDash, u'-')) {
      return DateParts{*year, *month, *day, 0, 0, 0};
    }
  }
  return std::nullopt;
}

// "hh:mm[:ss...]" into the parts.
bool ParseTime(std::u16string_view text, DateParts& parts) {
  const auto hour = NumberAt(text, 0, 2);
  const auto minute = NumberAt(text, 3, 2);
  if (!hour || !minute || !HasAt(text, 2, u':')) {
    return false;
  }
  parts.hour = *hour;
  parts.minute = *minute;
  parts.second = 0;
  if (HasAt(text, 5, u':')) {
    const auto second = NumberAt(text, 6, 2);
    if (!second) {
      return false;
    }
    parts.second = *second;
  }
  return true;
}

std::optional<Date> ParseTimeOfDay(std::u16string_view text) {
  DateParts parts;
  return ParseTime(text, parts) && automation::IsValid(parts)
             ? std::optional(automation::MakeDate(parts))
             : std::nullopt;
}

std::optional<bool> ParseBoolean(std::u16string_view text) {
  using namespace std::string_view_literals;
  if (const auto number = Parse<double>(text)) {
    return *number != 0;
  }
  const auto isOneOf = [&](auto... words) {
    return (automation::EqualsNoCase(text, words) || ...);
  };
  if (isOneOf(u"t"sv, u"true"sv)) {
    return true;
  }
  if (isOneOf(u"f"sv, u"false"sv)) {
    return false;
  }
  return std::nullopt;
}

// The whole number in the column's width, or the next width that holds it.
std::optional<Value> WholeNumber(std::u16string_view text, bool sixteenBits) {
  const auto number = Parse<std::int64_t>(text);
  if (!number) {
    return std::nullopt;
  }
  if (sixteenBits && std::in_range<std::int16_t>(*number)) {
    return Value(static_cast<std::int16_t>(*number));
  }
  if (std::in_range<std::int32_t>(*number)) {
    return Value(static_cast<std::int32_t>(*number));
  }
  return Value(*ParseDecimal(text));
}

template <class T>
std::optional<Value> AsValue(std::optional<T> content) {
  return content ? std::optional(Value(*content)) : std::nullopt;
}

std::optional<Value> Convert(std::u16string_view text, ColumnKind kind) {
  switch (kind) {
    case ColumnKind::Boolean:
      return AsValue(ParseBoolean(text));
    case ColumnKind::Int16:
    case ColumnKind::Int32:
    case ColumnKind::BigInt: {
      const auto whole = WholeNumber(text, kind == ColumnKind::Int16);
      return whole ? whole : AsValue(Parse<double>(text));
    }
    case ColumnKind::Single: {
      const auto single = Parse<float>(text);
      return single ? std::optional(Value(automation::WidenSingle(*single)))
                    : AsValue(Parse<double>(text));
    }
    case ColumnKind::Double:
      return AsValue(Parse<double>(text));
    case ColumnKind::Decimal: {
      const auto decimal = AsValue(ParseDecimal(text));
      return decimal ? decimal : AsValue(Parse<double>(text));
    }
    case ColumnKind::Currency:
      return AsValue(ParseCurrency(text));
    case ColumnKind::Date:
      return AsValue(ParseTimestamp(text));
    case ColumnKind::Time:
      return AsValue(ParseTimeOfDay(text));
    case ColumnKind::Text:
    case ColumnKind::Binary:
      break;
  }
  return std::nullopt;
}

}  // namespace

Value ToValue(std::u16string text, ColumnKind kind) {
  auto converted = Convert(text, kind);
  return converted ? std::move(*converted) : Value(std::move(text));
}

std::optional<Decimal> ParseDecimal(std::u16string_view text) {
  auto number = ParseDigits(text);
  return number ? ToDecimal(std::move(*number)) : std::nullopt;
}

std::optional<Currency> ParseCurrency(std::u16string_view text) {
  auto number = ParseDigits(text);
  return number ? ToCurrency(std::move(*number)) : std::nullopt;
}

std::optional<Date> ParseTimestamp(std::u16string_view text) {
  auto parts = ParseDay(text);
  if (!parts) {
    return std::nullopt;
  }
  if (text.size() > kDateLength) {
    const char16_t separator = text[kDateLength];
    if ((separator != u' ' && separator != u'T') ||
        !ParseTime(text.substr(kDateLength + 1), *parts)) {
      return std::nullopt;
    }
  }
  return automation::IsValid(*parts) ? std::optional(automation::MakeDate(*parts)) : std::nullopt;
}

}  // namespace odbc
