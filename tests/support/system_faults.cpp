#include "support/system_faults.h"

#include <atomic>

namespace quilmark {

static std::atomic<SystemFaults*> inForce = nullptr;

SystemFaults::SystemFaults(FaultKind kind, int failing) : kind_(kind), failing_(failing) {
  inForce = this;
}

// Threads of the work have ended by then.
SystemFaults::~SystemFaults() { inForce = nullptr; }

bool SystemFaults::HasFailed() const {
  const std::scoped_lock lock(mutex_);
  return failing_ != 0 && counted_ >= failing_;
}

std::vector<std::string> SystemFaults::Calls() const {
  const std::scoped_lock lock(mutex_);
  return calls_;
}

int SystemFaults::OpenFiles() const {
  const std::scoped_lock lock(mutex_);
  return static_cast<int>(open_.size());
}

SystemFaultSwitch::Verdict SystemFaultSwitch::Ask(const char* call, Moves moves) {
  SystemFaults* const faults = inForce;
  if (faults == nullptr) return Verdict::kPass;
  const std::scoped_lock lock(faults->mutex_);
  faults->calls_.emplace_back(call);
  if (faults->kind_ == FaultKind::kFull && moves == Moves::kNothing) return Verdict::kPass;
  const int number = ++faults->counted_;
  if (faults->failing_ == 0 || number < faults->failing_) return Verdict::kPass;
  const bool isThatCall = number == faults->failing_;
  if (faults->kind_ == FaultKind::kOnce) return isThatCall ? Verdict::kFail : Verdict::kPass;
  return isThatCall && faults->kind_ != FaultKind::kEnd ? Verdict::kHalf : Verdict::kFail;
}

void SystemFaultSwitch::Opened(std::ptrdiff_t handle) {
  SystemFaults* const faults = inForce;
  if (faults == nullptr) return;
  const std::scoped_lock lock(faults->mutex_);
  faults->open_.insert(handle);
}

void SystemFaultSwitch::Closed(std::ptrdiff_t handle) {
  SystemFaults* const faults = inForce;
  if (faults == nullptr) return;
  const std::scoped_lock lock(faults->mutex_);
  faults->open_.erase(handle);
}

}  // namespace quilmark
