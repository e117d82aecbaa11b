#include "platform/generation.h"

#include "platform/shutdown.h"

namespace quilmark {

bool Ticket::IsCurrent() const {
  return !ShutdownRequested && (generation_ == nullptr || generation_->Number() == number_);
}

}  // namespace quilmark
