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
  // Of work that never began: always stale.
  Ticket() = default;

  // Of work that nothing supersedes: current until the program ends.
  static Ticket Unlimited() {
    Ticket ticket;
    ticket.isUnlimited_ = true;
    return ticket;
  }

  // Whether the work still counts: nothing has superseded it, and the program does not end.
  [[nodiscard]] bool IsCurrent() const;

  // What messages carry, by which the window drops those of former work; 0 without a generation.
  uint64_t Number() const { return number_; }

 private:
  friend class Generation;
  Ticket(const Generation& generation, uint64_t number) : generation_(&generation), number_(number) {}

  const Generation* generation_ = nullptr;
  uint64_t number_ = 0;
  bool isUnlimited_ = false;
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

  // Whether the ticket is one of this generation, and current.
  [[nodiscard]] bool IsCurrent(const Ticket& ticket) const {
    return ticket.generation_ == this && ticket.IsCurrent();
  }

  // How often Supersede was called.
  uint64_t Number() const { return number_; }

 private:
  std::atomic<uint64_t> number_ = 0;
};

}  // namespace quilmark
