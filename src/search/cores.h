// Work of the processor alone, spread over the cores.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace quilmark {

// Threads that OnCores uses at most, the calling one included.
inline size_t CoreCount() {
  constexpr unsigned kLeast = 2, kMost = 6;
  return std::clamp(std::thread::hardware_concurrency(), kLeast, kMost);
}

// Calls work(worker, first, end) for pieces of at most `step` of the numbers below `count`, on up to
// CoreCount() threads, and returns when all is done. `worker` numbers the threads from 0. What `work`
// throws leaves here, on the calling thread, once every thread has ended.
template <typename Work>
void OnCores(size_t count, size_t step, Work work) {
  std::atomic<size_t> next = 0;
  std::mutex failureLock;
  std::exception_ptr failure;
  const auto run = [&](size_t worker) {
    try {
      for (size_t first = next.fetch_add(step); first < count; first = next.fetch_add(step)) {
        work(worker, first, std::min(first + step, count));
      }
    } catch (...) {
      next = count;
      const std::scoped_lock lock(failureLock);
      failure = std::current_exception();
    }
  };
  const size_t pieces = (count + step - 1) / step;
  std::vector<std::thread> others;
  others.reserve(CoreCount());
  try {
    while (others.size() + 1 < std::min(CoreCount(), pieces))
      others.emplace_back(run, others.size() + 1);
  } catch (const std::system_error&) {
    // Fewer threads take longer, nothing else.
  }
  run(0);
  for (std::thread& thread : others) thread.join();
  if (failure) std::rethrow_exception(failure);
}

}  // namespace quilmark
