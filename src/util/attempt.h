// A failure as a value: the result of a procedure that has already shown its error to the user.
#pragma once

#include <cstdint>
#include <optional>
#include <utility>

namespace util {

// The number of an error that the user has been shown.
struct Failure {
  std::int32_t number;
};

// The result of a procedure under the error trap for callers inside the component: its value, or
// the error that the user has been shown. The caller decides how to handle a failure.
template <class T>
class [[nodiscard]] Attempt {
 public:
  explicit Attempt(T value) : value_(std::move(value)) {}
  explicit Attempt(Failure failure) : error_(failure.number) {}

  bool Failed() const { return !value_; }
  // Only after a success.
  const T& Value() const { return value_.value(); }
  // For callers that treat a failure as an empty result.
  T OrEmpty() const& { return value_ ? *value_ : T{}; }
  T OrEmpty() && { return value_ ? std::move(*value_) : T{}; }
  // The number of the error.
  std::optional<std::int32_t> error() const { return error_; }

 private:
  std::optional<T> value_;
  std::optional<std::int32_t> error_;
};

// For a procedure without a value: whether it succeeded.
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
