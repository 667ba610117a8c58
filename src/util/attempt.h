// A failure as a value: the result of a procedure that has already shown its error to the user.
#pragma once

#include <optional>
#include <utility>

namespace util {

// An error that the user has been shown.
struct Failure {};

// The result of a procedure under the error trap for callers inside the component: its value, or a
// failure. The caller decides how to handle a failure.
template <class T>
class [[nodiscard]] Attempt {
 public:
  explicit Attempt(T value) : value_(std::move(value)) {}
  explicit Attempt(Failure /*failure*/) {}

  bool Failed() const { return !value_; }
  // Only after a success.
  const T& Value() const { return value_.value(); }
  // For callers that treat a failure as an empty result.
  T OrEmpty() const& { return value_ ? *value_ : T{}; }
  T OrEmpty() && { return value_ ? std::move(*value_) : T{}; }

 private:
  std::optional<T> value_;
};

// For a procedure without a value: whether it succeeded.
template <>
class [[nodiscard]] Attempt<void> {
 public:
  Attempt() = default;
  explicit Attempt(Failure /*failure*/) : failed_(true) {}

  bool Failed() const { return failed_; }
  void OrEmpty() const {}

 private:
  bool failed_ = false;
};

}  // namespace util
