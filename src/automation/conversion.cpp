#include "automation/conversion.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <limits>
#include <type_traits>

#include "automation/automation_error.h"
#include "automation/date.h"
#include "automation/decimal.h"
#include "automation/text.h"

namespace automation {
namespace {

constexpr double kTenThousand = 10000.0;
constexpr int kSignificantDigits = 15;

[[noreturn]] void Fail(RuntimeError error) {
  throw AutomationError(error);
}

double RoundHalfToEven(double number) {
  const double below = std::floor(number);
  const double rest = number - below;
  const bool up = rest > 0.5 || (rest == 0.5 && std::fmod(below, 2.0) != 0.0);
  return up ? below + 1 : below;
}

template <class Integer>
Integer Rounded(double number) {
  const double rounded = RoundHalfToEven(number);
  if (!(rounded >= std::numeric_limits<Integer>::min() &&
        rounded <= std::numeric_limits<Integer>::max())) {
    Fail(RuntimeError::Overflow);
  }
  return static_cast<Integer>(rounded);
}

bool IsBlank(char16_t unit) {
  return unit == u' ' || (unit >= u'\t' && unit <= u'\r');
}

std::u16string_view WithoutBlanks(std::u16string_view text) {
  while (!text.empty() && IsBlank(text.front())) {
    text.remove_prefix(1);
  }
  while (!text.empty() && IsBlank(text.back())) {
    text.remove_suffix(1);
  }
  return text;
}

bool IsDigit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}

// Where the group separator is a no-break space, an ordinary space counts, too: people type that.
bool IsGroup(char16_t unit, const Regional& regional) {
  return unit == regional.groupSeparator || (regional.groupSeparator == u'\u00A0' && unit == u' ');
}

// The text in the form that from_chars reads ("." as separator, no grouping); "" if not a number.
std::string PlainNumber(std::u16string_view text, const Regional& regional) {
  std::string plain;
  std::size_t at = 0;
  bool digits = false;
  const auto here = [&] { return at < text.size() ? text[at] : u'\0'; };
  const auto takeSign = [&] {
    if (here() == u'-' || here() == u'+') {
      if (text[at++] == u'-') {
        plain.push_back('-');
      }
    }
  };
  const auto takeDigits = [&](bool grouped) {
    const std::size_t from = plain.size();
    for (; IsDigit(here()) || (grouped && digits && IsGroup(here(), regional)); ++at) {
      if (IsDigit(here())) {
        plain.push_back(static_cast<char>(here()));
        digits = true;
      }
    }
    return plain.size() > from;
  };
  takeSign();
  takeDigits(true);
  if (here() == regional.decimalSeparator) {
    ++at;
    plain.push_back('.');
    takeDigits(false);
  }
  if (digits && (here() == u'e' || here() == u'E')) {
    ++at;
    plain.push_back('e');
    takeSign();
    if (!takeDigits(false)) {
      return {};
    }
  }
  return digits && at == text.size() ? plain : std::string();
}

// The shortest text of at most 15 significant digits, split into digits without trailing zeros and
// the power of ten of the first digit.
struct Scientific {
  std::string digits;
  int exponent = 0;
};

// Uses snprintf: the library's to_chars for doubles alone would make up a third of the DLL. The
// separator that it prints depends on the host process's C locale, so only digits are taken.
Scientific TakeApart(double magnitude, int significantDigits = kSignificantDigits) {
  if (!std::isfinite(magnitude)) {
    Fail(RuntimeError::Overflow);
  }
  std::array<char, 40> buffer{};
  const int length =
      std::snprintf(buffer.data(), buffer.size(), "%.*e", significantDigits - 1, magnitude);
  const std::string_view text(buffer.data(), static_cast<std::size_t>(length));
  const auto mark = text.find('e');
  Scientific result;
  std::copy_if(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(mark),
               std::back_inserter(result.digits), [](char c) { return c >= '0' && c <= '9'; });
  result.digits.erase(result.digits.find_last_not_of('0') + 1);
  const auto exponent = text.substr(mark + 1 + (text[mark + 1] == '+' ? 1 : 0));
  std::from_chars(exponent.data(), exponent.data() + exponent.size(), result.exponent);
  return result;
}

std::u16string Widened(std::string_view ascii) {
  return {ascii.begin(), ascii.end()};
}

std::u16string PositionalText(const Scientific& number, char16_t separator) {
  const auto count = static_cast<int>(number.digits.size());
  if (number.exponent < 0) {
    return std::u16string(u"0") + separator +
           std::u16string(static_cast<std::size_t>(-number.exponent - 1), u'0') +
           Widened(number.digits);
  }
  const int whole = number.exponent + 1;
  if (count <= whole) {
    return Widened(number.digits) + std::u16string(static_cast<std::size_t>(whole - count), u'0');
  }
  const auto split = static_cast<std::size_t>(whole);
  return Widened(number.digits.substr(0, split)) + separator + Widened(number.digits.substr(split));
}

std::u16string ExponentText(const Scientific& number, char16_t separator) {
  std::u16string text = Widened(number.digits.substr(0, 1));
  if (number.digits.size() > 1) {
    text += separator + Widened(number.digits.substr(1));
  }
  const std::u16string exponent = Decimal10(std::abs(number.exponent));
  return text + u"E" + (number.exponent < 0 ? u'-' : u'+') +
         (exponent.size() < 2 ? u"0" + exponent : exponent);
}

double TextToDouble(const std::u16string& text, const Regional& regional) {
  const auto number = ParseNumber(text, regional);
  if (!number) {
    Fail(RuntimeError::TypeMismatch);
  }
  if (std::isinf(*number)) {
    Fail(RuntimeError::Overflow);
  }
  return *number;
}

bool TextToBool(const std::u16string& text, const Regional& regional) {
  if (EqualsNoCase(text, u"True")) {
    return true;
  }
  if (EqualsNoCase(text, u"False")) {
    return false;
  }
  return TextToDouble(text, regional) != 0;
}

// As the runtime prints a decimal: without trailing zeros in the fraction.
std::u16string ShortDecimalText(const Decimal& decimal, const Regional& regional) {
  std::u16string text = DecimalText(decimal, regional.decimalSeparator);
  if (decimal.scale > 0) {
    text.erase(text.find_last_not_of(u'0') + 1);
    if (text.back() == regional.decimalSeparator) {
      text.pop_back();
    }
  }
  return text;
}

Decimal DecimalOfCurrency(Currency amount) {
  Decimal decimal = DecimalOf(amount.tenThousandths);
  decimal.scale = 4;
  return decimal;
}

}  // namespace

std::int32_t RoundToInt32(double number) {
  return Rounded<std::int32_t>(number);
}

double WidenSingle(float number) {
  constexpr int kDigitsOfASingle = 7;
  if (number == 0 || !std::isfinite(number)) {
    return number;
  }
  const Scientific parts = TakeApart(std::abs(number), kDigitsOfASingle);
  const int exponent = parts.exponent + 1 - static_cast<int>(parts.digits.size());
  const std::string text = parts.digits + "e" + std::to_string(exponent);
  double magnitude = 0;
  std::from_chars(text.data(), text.data() + text.size(), magnitude);
  return std::copysign(magnitude, number);
}

std::optional<double> ParseNumber(std::u16string_view text, const Regional& regional) {
  const std::string plain = PlainNumber(WithoutBlanks(text), regional);
  if (plain.empty()) {
    return std::nullopt;
  }
  double number = 0;
  const auto result = std::from_chars(plain.data(), plain.data() + plain.size(), number);
  if (result.ec == std::errc::result_out_of_range) {
    const bool tiny = plain.find("e-") != std::string::npos;
    return tiny ? 0.0 : std::numeric_limits<double>::infinity();
  }
  return number;
}

std::u16string NumberText(double number, const Regional& regional) {
  if (number == 0) {
    return u"0";
  }
  const Scientific parts = TakeApart(std::fabs(number));
  const int places = static_cast<int>(parts.digits.size()) - 1 - parts.exponent;
  const bool positional = parts.exponent < kSignificantDigits && places <= kSignificantDigits;
  return (number < 0 ? u"-" : u"") + (positional ? PositionalText(parts, regional.decimalSeparator)
                                                 : ExponentText(parts, regional.decimalSeparator));
}

void AppendFixed(std::u16string& text, double number, const Regional& regional) {
  // Halves are rounded on the 15 digits that people see: 0.145 rounds up although its binary value
  // is lower.
  const Scientific parts = number == 0 ? Scientific() : TakeApart(std::fabs(number));
  std::string digits = parts.digits;
  const int firstPlace = parts.exponent + 3;  // how many digits stand before the third decimal
  if (firstPlace < 0) {
    digits = "000";
  } else {
    digits.insert(0, "000");  // at least one digit before the decimals, also for a carry
    const auto kept = static_cast<std::size_t>(firstPlace) + 3;
    const bool up = digits.size() > kept && digits[kept] >= '5';
    digits.resize(kept, '0');
    for (auto digit = digits.rbegin(); up && digit != digits.rend(); ++digit) {
      if (*digit != '9') {
        ++*digit;
        break;
      }
      *digit = '0';
    }
  }
  if (number < 0 && digits.find_first_not_of('0') != std::string::npos) {
    text.push_back(u'-');
  }
  const std::size_t decimals = digits.size() - 2;
  const std::size_t significant = std::min(digits.find_first_not_of('0'), decimals - 1);
  for (std::size_t at = significant; at < digits.size(); ++at) {
    if (at == decimals) {
      text.push_back(regional.decimalSeparator);
    }
    text.push_back(static_cast<char16_t>(digits[at]));
  }
}

double ToDouble(const Value& value, const Regional& regional) {
  return std::visit(
      [&](const auto& content) -> double {
        using T = std::remove_cvref_t<decltype(content)>;
        if constexpr (std::is_same_v<T, Empty>) {
          return 0;
        } else if constexpr (std::is_same_v<T, Null>) {
          Fail(RuntimeError::InvalidUseOfNull);
        } else if constexpr (std::is_same_v<T, bool>) {
          return content ? -1 : 0;
        } else if constexpr (std::is_same_v<T, Currency>) {
          return static_cast<double>(content.tenThousandths) / kTenThousand;
        } else if constexpr (std::is_same_v<T, Decimal>) {
          return DoubleOf(content);
        } else if constexpr (std::is_same_v<T, Date>) {
          return content.days;
        } else if constexpr (std::is_same_v<T, std::u16string>) {
          return TextToDouble(content, regional);
        } else {
          return content;
        }
      },
      value.content());
}

std::int16_t ToInt16(const Value& value, const Regional& regional) {
  return Rounded<std::int16_t>(ToDouble(value, regional));
}

std::int32_t ToInt32(const Value& value, const Regional& regional) {
  return Rounded<std::int32_t>(ToDouble(value, regional));
}

bool ToBool(const Value& value, const Regional& regional) {
  return value.Is<std::u16string>() ? TextToBool(value.As<std::u16string>(), regional)
                                    : ToDouble(value, regional) != 0;
}

std::u16string ToText(const Value& value, const Regional& regional) {
  return std::visit(
      [&](const auto& content) -> std::u16string {
        using T = std::remove_cvref_t<decltype(content)>;
        if constexpr (std::is_same_v<T, Empty>) {
          return {};
        } else if constexpr (std::is_same_v<T, Null>) {
          Fail(RuntimeError::InvalidUseOfNull);
        } else if constexpr (std::is_same_v<T, bool>) {
          return content ? u"True" : u"False";
        } else if constexpr (std::is_same_v<T, Currency>) {
          return ShortDecimalText(DecimalOfCurrency(content), regional);
        } else if constexpr (std::is_same_v<T, Decimal>) {
          return ShortDecimalText(content, regional);
        } else if constexpr (std::is_same_v<T, Date>) {
          return DateText(content, regional);
        } else if constexpr (std::is_same_v<T, std::u16string>) {
          return content;
        } else if constexpr (std::is_same_v<T, double>) {
          return NumberText(content, regional);
        } else {
          return Decimal10(content);
        }
      },
      value.content());
}

Date ToDate(const Value& value, const Regional& regional) {
  if (value.Is<std::u16string>()) {
    const auto date = ParseDate(value.As<std::u16string>(), regional);
    if (!date) {
      Fail(RuntimeError::TypeMismatch);
    }
    return *date;
  }
  const Date date{ToDouble(value, regional)};
  PartsOf(date);  // raises 6 outside the calendar
  return date;
}

}  // namespace automation
