#include "platform/pages.h"

#include <windows.h>

namespace quilmark {

// Large pages would need a right that administrators do not have by default.
std::unique_ptr<void, PagesDeleter> AllocatePages(size_t bytes) {
  return {VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE), PagesDeleter{bytes}};
}

void PagesDeleter::operator()(void* pages) const { VirtualFree(pages, 0, MEM_RELEASE); }

}  // namespace quilmark
