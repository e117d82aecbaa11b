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

// What one call of an enumeration delivers.
struct EnumBuffer : ControlBuffer<65'536> {
  uint32_t bytesReturned = 0;

  // The bytes that were delivered; good as long as the buffer.
  std::span<const std::byte> Block() const { return std::span(bytes).first(bytesReturned); }
};

// Has no upper bound: a slow parser lets blocks pile up rather than keep the file system waiting. One
// thread pushes and finishes, another one pops.
class EnumQueue {
 public:
  // Hands a block over; it is dropped where nobody takes blocks any more.
  void Push(std::unique_ptr<EnumBuffer> buffer);

  // Says that no more blocks follow.
  void Finish();

  // Says that nobody takes blocks any more: those that are there are dropped, and those that come.
  void Abandon();
  // Whether Abandon was called. Any thread.
  bool IsAbandoned() const { return abandoned_; }

  // The oldest block, waiting for one; null when the queue is empty and finished.
  [[nodiscard]] std::unique_ptr<EnumBuffer> Pop();

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::unique_ptr<EnumBuffer>> buffers_;  // mutex_
  bool producerDone_ = false;                        // mutex_
  std::atomic<bool> abandoned_ = false;              // written with mutex_ held
};

}  // namespace quilmark
