#include "platform/pages.h"

#include <sys/mman.h>

#include <cstdint>

namespace quilmark {

// Of x86-64 and of ARM with pages of 4 KiB; elsewhere the alignment does no harm.
static constexpr uintptr_t kHugePage = uintptr_t{2} << 20;
static constexpr uintptr_t kPage = 4'096;

// What lies from `first` to `end`, both at the start of a page.
static void GiveBack(uintptr_t first, uintptr_t end) {
  if (first < end) munmap(reinterpret_cast<void*>(first), end - first);
}

// Reserves one huge page more than asked for, and gives back what lies before and behind the aligned
// part.
std::unique_ptr<void, PagesDeleter> AllocatePages(size_t bytes) {
  const size_t reserved = bytes + kHugePage;
  void* const base = mmap(nullptr, reserved, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (base == MAP_FAILED) return nullptr;
  const auto start = reinterpret_cast<uintptr_t>(base);
  const uintptr_t aligned = (start + kHugePage - 1) / kHugePage * kHugePage;
  GiveBack(start, aligned);
  GiveBack((aligned + bytes + kPage - 1) / kPage * kPage, start + reserved);
  std::unique_ptr<void, PagesDeleter> pages(reinterpret_cast<void*>(aligned), PagesDeleter{bytes});
  madvise(pages.get(), bytes, MADV_HUGEPAGE);  // a wish: small pages serve too
  return pages;
}

void PagesDeleter::operator()(void* pages) const { munmap(pages, bytes); }

}  // namespace quilmark
