#pragma once

#include <string>
#include <utility>
#include <variant>

namespace korvex::ways {

// Why something that a person asked for can't be: a sentence without a full stop, in UTF-8.
struct Refusal {
  std::string reason;
};

// What was asked for, or why it can't be.
template <class Value>
class Result {
 public:
  Result(Value value) : held_(std::move(value)) {}
  Result(Refusal refusal) : held_(std::move(refusal)) {}

  explicit operator bool() const { return std::holds_alternative<Value>(held_); }

  // Only of a result that is no refusal.
  Value& operator*() { return std::get<Value>(held_); }
  const Value& operator*() const { return std::get<Value>(held_); }
  Value* operator->() { return &std::get<Value>(held_); }
  const Value* operator->() const { return &std::get<Value>(held_); }

  // Only of a refusal.
  const std::string& reason() const { return std::get<Refusal>(held_).reason; }

 private:
  std::variant<Value, Refusal> held_;
};

}  // namespace korvex::ways
