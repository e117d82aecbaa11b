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

  // The oldest block, waiting for one; null when the queue is empty and finished.
  std::unique_ptr<EnumBuffer> Pop();

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::unique_ptr<EnumBuffer>> buffers_;  // mutex_
  bool producerDone_ = false;                        // mutex_
};

}  // namespace quilmark
