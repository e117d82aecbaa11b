// Whether the work on a file is to go on; asked between its small steps.
#pragma once

#include <atomic>
#include <cstdint>

#include "platform/generation.h"

namespace quilmark {

// A value. Made of a ticket alone, or with a count by which somebody else sees that the work moves.
class WorkCheck {
 public:
  // Implicit: who has no count hands over the ticket.
  WorkCheck(const Ticket& ticket, std::atomic<uint32_t>* steps = nullptr)  // NOLINT
      : ticket_(ticket), steps_(steps) {}

  // Counts a step. False once the search has been superseded, and when the program ends.
  [[nodiscard]] bool GoesOn() const {
    // The thread that works is the only one that writes.
    if (steps_ != nullptr) {
      steps_->store(steps_->load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
    }
    return ticket_.IsCurrent();
  }

 private:
  Ticket ticket_;
  std::atomic<uint32_t>* steps_;  // outlives this; null: nobody counts
};

}  // namespace quilmark
