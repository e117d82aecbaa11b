// Work spread over the cores, or over as many threads as the caller says.
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
  // Chosen: two where the system does not tell, and no more than six, which leaves cores to others.
  constexpr unsigned kLeast = 2, kMost = 6;
  return std::clamp(std::thread::hardware_concurrency(), kLeast, kMost);
}

// Calls work(worker, first, end) for pieces of at most `step` of the numbers below `count`, on up to
// `most` threads, and returns when all is done. `worker` numbers the threads from 0. What `work` throws
// leaves here, on the calling thread, once every thread has ended.
template <typename Work>
void OnThreads(size_t most, size_t count, size_t step, Work work) {
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
  others.reserve(most);
  try {
    while (others.size() + 1 < std::min(most, pieces)) others.emplace_back(run, others.size() + 1);
  } catch (const std::system_error&) {
    // Fewer threads take longer, nothing else.
  }
  run(0);
  for (std::thread& thread : others) thread.join();
  if (failure) std::rethrow_exception(failure);
}

// OnThreads with as many as CoreCount() says.
template <typename Work>
void OnCores(size_t count, size_t step, Work work) {
  OnThreads(CoreCount(), count, step, work);
}

// As std::sort: the quarters on their own threads, then merged two by two.
template <typename Iterator, typename Before>
void SortOnCores(Iterator first, Iterator end, Before before) {
  // Chosen: fewer are sorted in a few milliseconds by one thread.
  constexpr size_t kWorthThreads = 20'000, kParts = 4;
  const auto count = static_cast<size_t>(end - first);
  if (count < kWorthThreads) return std::sort(first, end, before);
  const auto at = [&](size_t part) {
    return first + static_cast<std::ptrdiff_t>(count * part / kParts);
  };
  OnCores(kParts, 1, [&](size_t, size_t part, size_t) { std::sort(at(part), at(part + 1), before); });
  OnCores(kParts / 2, 1, [&](size_t, size_t half, size_t) {
    std::inplace_merge(at(2 * half), at(2 * half + 1), at(2 * half + 2), before);
  });
  std::inplace_merge(first, at(kParts / 2), end, before);
}

}  // namespace quilmark
