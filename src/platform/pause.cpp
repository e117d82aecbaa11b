#include "platform/pause.h"

#include <chrono>

namespace quilmark {

void Pause::Sleep(uint32_t ms, const std::atomic<bool>& wanted) {
  std::unique_lock lock(mutex_);
  changed_.wait_for(lock, std::chrono::milliseconds(ms), [&] { return !wanted; });
}

void Pause::Wake() {
  { const std::scoped_lock lock(mutex_); }  // a sleeper is either waiting or has yet to look
  changed_.notify_all();
}

}  // namespace quilmark
