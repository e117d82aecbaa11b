// What an optional holds, in the words of a test.
#pragma once

#include <optional>
#include <utility>

namespace quilmark {

// True if there is a value; it is in `out` then.
template <typename Value>
bool Gives(std::optional<Value> given, Value& out) {
  if (given) out = *std::move(given);
  return given.has_value();
}

}  // namespace quilmark
