// Blocks of an enumeration on their way from the thread that reads them to the one that parses them.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <span>

#include "platform/volume_device.h"

namespace quilmark {

struct EnumBuffer : ControlBuffer<65'536> {
  uint32_t bytesReturned = 0;

  std::span<const std::byte> Block() const { return std::span(bytes).first(bytesReturned); }
};

// Has no upper bound: a slow parser lets blocks pile up rather than keep the file system waiting.
class EnumQueue {
 public:
  void Push(std::unique_ptr<EnumBuffer> buffer);

  // No more blocks follow.
  void Finish();

  // Nobody takes blocks any more: those that are there go, and those that come are dropped.
  void Abandon();
  bool IsAbandoned() const { return abandoned_; }

  // The oldest block, waiting for one; null when the queue is empty and finished.
  std::unique_ptr<EnumBuffer> Pop();

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::unique_ptr<EnumBuffer>> buffers_;  // mutex_
  bool producerDone_ = false;                        // mutex_
  std::atomic<bool> abandoned_ = false;              // written with mutex_ held
};

}  // namespace quilmark
