// Owner of a handle of the system. Traits give the type `Value`, its Empty() and its Close(value).
#pragma once

#include <utility>

namespace quilmark {

// Closes the value that it holds. Movable; empty without one.
template <typename Traits>
class Unique {
 public:
  using Value = typename Traits::Value;

  Unique() = default;
  explicit Unique(Value value) : value_(value) {}
  Unique(Unique&& other) noexcept : value_(other.Release()) {}
  Unique& operator=(Unique&& other) noexcept {
    Reset(other.Release());
    return *this;
  }
  ~Unique() { Reset(); }

  // Traits::Empty() without one.
  Value Get() const { return value_; }
  explicit operator bool() const { return value_ != Traits::Empty(); }

  // Gives the value up without closing it.
  Value Release() { return std::exchange(value_, Traits::Empty()); }

  // Closes the value and takes another in its place.
  void Reset(Value value = Traits::Empty()) {
    if (value_ != Traits::Empty()) Traits::Close(value_);
    value_ = value;
  }

 private:
  Value value_ = Traits::Empty();
};

}  // namespace quilmark
