#include "index/build/enum_queue.h"

namespace quilmark {

void EnumQueue::Push(std::unique_ptr<EnumBuffer> buffer) {
  {
    const std::scoped_lock lock(mutex_);
    if (abandoned_) return;
    buffers_.push_back(std::move(buffer));
  }
  changed_.notify_one();
}

void EnumQueue::Finish() {
  {
    const std::scoped_lock lock(mutex_);
    producerDone_ = true;
  }
  changed_.notify_one();
}

void EnumQueue::Abandon() {
  const std::scoped_lock lock(mutex_);
  abandoned_ = true;
  buffers_.clear();
}

std::unique_ptr<EnumBuffer> EnumQueue::Pop() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return !buffers_.empty() || producerDone_; });
  if (buffers_.empty()) return nullptr;
  auto buffer = std::move(buffers_.front());
  buffers_.pop_front();
  return buffer;
}

}  // namespace quilmark
