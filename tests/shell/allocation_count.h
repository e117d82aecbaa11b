// Counts what a piece of code takes from the heap by operator new.
#pragma once

#include <cstddef>

namespace quilmark {

// On this thread, while one lives; one at a time. Calls of this program alone, not of shared libraries.
class AllocationCount {
 public:
  AllocationCount();
  ~AllocationCount();
  AllocationCount(const AllocationCount&) = delete;
  AllocationCount& operator=(const AllocationCount&) = delete;

  size_t Value() const;
};

}  // namespace quilmark
