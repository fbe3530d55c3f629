#pragma once

#include <stdlib.h>

#include <optional>
#include <string>

namespace korvex::test {

// Sets an environment variable (unsets it without a value) for its own lifetime.
class ScopedVariable {
 public:
  ScopedVariable(const char* name, const std::optional<std::string>& value) : name_(name) {
    if (const char* old = ::getenv(name)) previous_ = old;
    apply(value);
  }
  ~ScopedVariable() { apply(previous_); }
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;

 private:
  void apply(const std::optional<std::string>& value) {
    if (value) {
      ::setenv(name_, value->c_str(), 1);
    } else {
      ::unsetenv(name_);
    }
  }

  const char* name_;
  std::optional<std::string> previous_;
};

}  // namespace korvex::test
