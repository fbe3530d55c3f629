#pragma once

#include <optional>
#include <utility>

#include "values/error_codes.h"

namespace korvex {

// A value, or the code of why there is none.
template <typename T>
class [[nodiscard]] Result {
 public:
  Result(T value) : value_(std::move(value)) {}
  Result(ErrorCode code) : code_(code) {}

  explicit operator bool() const { return value_.has_value(); }

  // error::none with a value.
  ErrorCode code() const { return code_; }

  T value_or(T other) const { return value_ ? *value_ : std::move(other); }

  friend bool operator==(const Result&, const Result&) = default;

  // Only with a value.
  T& operator*() { return *value_; }
  const T& operator*() const { return *value_; }
  T* operator->() { return &*value_; }
  const T* operator->() const { return &*value_; }

 private:
  std::optional<T> value_;
  ErrorCode code_ = error::none;
};

}  // namespace korvex
