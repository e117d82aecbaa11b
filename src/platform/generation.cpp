#include "platform/generation.h"

#include "platform/shutdown.h"

namespace quilmark {

bool Ticket::IsCurrent() const {
  if (ShutdownRequested) return false;
  return isUnlimited_ || (generation_ != nullptr && generation_->Number() == number_);
}

}  // namespace quilmark
