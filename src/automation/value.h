// An automation VARIANT, limited to the types that the host's database and the callers pass;
// compared by type and content.
#pragma once

#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>

namespace automation {

struct Empty {
  bool operator==(const Empty&) const = default;
};

struct Null {
  bool operator==(const Null&) const = default;
};

// VT_CY: an amount in ten-thousandths.
struct Currency {
  std::int64_t tenThousandths = 0;
  bool operator==(const Currency&) const = default;
};

// VT_DECIMAL: (negative ? -1 : 1) * (hi * 2^64 + lo) / 10^scale, scale 0 to 28.
struct Decimal {
  std::uint64_t lo = 0;
  std::uint32_t hi = 0;
  std::uint8_t scale = 0;
  bool negative = false;
  bool operator==(const Decimal&) const = default;
};

// VT_DATE: days since 1899-12-30, the time of day as the fraction (also for negative dates, where
// -1.25 is 1899-12-29 06:00). The valid range is the years 100 to 9999.
struct Date {
  double days = 0;
  bool operator==(const Date&) const = default;
};

// Whether T is one of the kinds that the std::variant Content holds.
template <class T, class Content>
inline constexpr bool kHolds = false;
template <class T, class... Kinds>
inline constexpr bool kHolds<T, std::variant<Kinds...>> = (std::is_same_v<T, Kinds> || ...);

class Value {
 public:
  using Content = std::variant<Empty, Null, bool, std::int16_t, std::int32_t, double, Currency,
                               Decimal, Date, std::u16string>;

  Value() = default;
  // A value is its content: int32_t, bool, std::u16string, Null() … convert implicitly.
  template <class T>
  requires kHolds<T, Content> Value(T content)
      : content_(std::in_place_type<T>, std::move(content)) {}
  Value(const char16_t* text) : content_(std::u16string(text)) {}

  template <class T>
  bool Is() const {
    return std::holds_alternative<T>(content_);
  }
  // The content of an alternative that Is() confirmed.
  template <class T>
  const T& As() const {
    return std::get<T>(content_);
  }
  bool IsNull() const { return Is<Null>(); }
  bool IsEmpty() const { return Is<Empty>(); }
  const Content& content() const { return content_; }

  bool operator==(const Value&) const = default;

 private:
  Content content_;
};

}  // namespace automation
