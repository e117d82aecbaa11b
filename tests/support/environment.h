// Environment variables of the test process.
#pragma once

#include <optional>
#include <string>

namespace quilmark {

// Sets a variable, or takes it away where `value` is empty, and puts the former state back at its end.
class ScopedEnvironment {
 public:
  ScopedEnvironment(std::string name, const std::optional<std::string>& value);
  ~ScopedEnvironment();
  ScopedEnvironment(const ScopedEnvironment&) = delete;
  ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

 private:
  std::string name_;
  std::optional<std::string> former_;
};

}  // namespace quilmark
