// A failure as a value: what a procedure gives that has told the user of its errors itself.
#pragma once

#include <cstdint>
#include <optional>
#include <utility>

namespace util {

// The number of an error that the user has been shown.
struct Failure {
  std::int32_t number;
};

// What a procedure under the error trap gave to a caller inside the component: its value, or
// nothing, and the user has been told. The caller says what it makes of a failure.
template <class T>
class [[nodiscard]] Attempt {
 public:
  explicit Attempt(T value) : value_(std::move(value)) {}
  explicit Attempt(Failure failure) : error_(failure.number) {}

  bool Failed() const { return !value_; }
  // To be asked for after a success.
  const T& Value() const { return value_.value(); }
  // For those to whom a failure is as good as nothing.
  T OrEmpty() const& { return value_ ? *value_ : T{}; }
  T OrEmpty() && { return value_ ? std::move(*value_) : T{}; }
  // The number of the error.
  std::optional<std::int32_t> error() const { return error_; }

 private:
  std::optional<T> value_;
  std::optional<std::int32_t> error_;
};

// Of a procedure without a value: whether it succeeded.
template <>
class [[nodiscard]] Attempt<void> {
 public:
  Attempt() = default;
  explicit Attempt(Failure failure) : error_(failure.number) {}

  bool Failed() const { return error_.has_value(); }
  void OrEmpty() const {}
  std::optional<std::int32_t> error() const { return error_; }

 private:
  std::optional<std::int32_t> error_;
};

}  // namespace util
