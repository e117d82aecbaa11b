// Which piece of background work still counts: the latest of its kind.
#pragma once

#include <atomic>
#include <cstdint>

namespace quilmark {

class Generation;

// What one piece of work was started under. A value that jobs carry and threads share; good as long as
// its Generation lives.
class Ticket {
 public:
  // Of no generation, for work that nothing supersedes: current until the program ends.
  Ticket() = default;

  // Whether the work still counts: nothing has superseded it, and the program does not end.
  [[nodiscard]] bool IsCurrent() const;

  // What messages carry; 0 for a ticket of no generation.
  uint64_t Number() const { return number_; }

 private:
  friend class Generation;
  Ticket(const Generation& generation, uint64_t number) : generation_(&generation), number_(number) {}

  const Generation* generation_ = nullptr;
  uint64_t number_ = 0;
};

// A counter that goes up whenever earlier work is to drop what it finds. Any thread.
class Generation {
 public:
  Generation() = default;
  Generation(const Generation&) = delete;
  Generation& operator=(const Generation&) = delete;

  // Makes every former ticket stale and returns the one that is current now.
  Ticket Supersede() { return Ticket(*this, ++number_); }

  // The ticket of the latest Supersede; before the first, one with the number 0.
  Ticket Latest() const { return Ticket(*this, number_); }

  // How often Supersede was called.
  uint64_t Number() const { return number_; }

 private:
  std::atomic<uint64_t> number_ = 0;
};

}  // namespace quilmark
