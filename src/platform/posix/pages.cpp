#include "platform/pages.h"

#include <sys/mman.h>

#include <cstdint>

namespace quilmark {

static constexpr size_t kHugePage = size_t{2} << 20;

// Reserves one huge page more than asked for, and gives back what lies before and behind the aligned
// part.
void* AllocatePages(size_t bytes) {
  const size_t reserved = bytes + kHugePage;
  void* const base = mmap(nullptr, reserved, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (base == MAP_FAILED) return nullptr;
  const auto start = reinterpret_cast<uintptr_t>(base);
  const uintptr_t aligned = (start + kHugePage - 1) / kHugePage * kHugePage;
  const uintptr_t end = (aligned + bytes + 4'095) / 4'096 * 4'096;
  if (aligned > start) munmap(base, aligned - start);
  if (start + reserved > end) munmap(reinterpret_cast<void*>(end), start + reserved - end);
  madvise(reinterpret_cast<void*>(aligned), bytes, MADV_HUGEPAGE);  // a wish: small pages serve too
  return reinterpret_cast<void*>(aligned);
}

void PagesDeleter::operator()(void* pages) const { munmap(pages, bytes); }

}  // namespace quilmark
