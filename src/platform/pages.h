// Memory for the large tables, straight from the system.
#pragma once

#include <cstddef>
#include <memory>
#include <new>

namespace quilmark {

// Gives pages back to the system.
struct PagesDeleter {
  size_t bytes = 0;
  void operator()(void* pages) const;  // for std::unique_ptr
};

// Zeroed memory, given back to the system when the owner dies. Backed by huge pages where the system has
// them to give: filling a table of millions of names then costs hundreds of page faults instead of ten
// thousands.
template <typename Item>
using Pages = std::unique_ptr<Item[], PagesDeleter>;

// `bytes` of zeroed memory. Null if the system has none left.
[[nodiscard]] std::unique_ptr<void, PagesDeleter> AllocatePages(size_t bytes);

// Room for `count` items of a type that zeroes make valid. Throws std::bad_alloc where memory runs out.
template <typename Item>
[[nodiscard]] Pages<Item> MakePages(size_t count) {
  const size_t bytes = count * sizeof(Item);
  auto pages = AllocatePages(bytes);
  if (pages == nullptr) throw std::bad_alloc();
  return Pages<Item>(static_cast<Item*>(pages.release()), PagesDeleter{bytes});
}

}  // namespace quilmark
