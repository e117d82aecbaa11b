// Owner of a file descriptor.
#pragma once

#include <unistd.h>

#include <utility>

namespace quilmark {

// Closes the descriptor that it holds. Movable; empty without one.
class UniqueFd {
 public:
  UniqueFd() = default;
  explicit UniqueFd(int fd) : fd_(fd) {}
  UniqueFd(UniqueFd&& other) noexcept : fd_(other.Release()) {}
  UniqueFd& operator=(UniqueFd&& other) noexcept {
    Reset(other.Release());
    return *this;
  }
  ~UniqueFd() { Reset(); }

  // -1 without one.
  int Get() const { return fd_; }
  explicit operator bool() const { return fd_ >= 0; }
  // Gives the descriptor up without closing it.
  int Release() { return std::exchange(fd_, -1); }

  // Closes the descriptor and takes `fd` in its place.
  void Reset(int fd = -1) {
    if (fd_ >= 0) close(fd_);
    fd_ = fd;
  }

 private:
  int fd_ = -1;
};

}  // namespace quilmark
