// What the list says where it has no rows.
#pragma once

#include <cstdint>
#include <string>

#include "index/engine/search_engine.h"

namespace quilmark {

// Two lines in the middle of the list.
struct EmptyText {
  std::u16string title, detail;

  bool operator==(const EmptyText&) const = default;
};

// Why there are no rows.
enum class Emptiness { kNotAsked, kNotFound, kFiltered };

// The texts for that reason. `indexed` is the number of names that a search looks through.
EmptyText EmptyListText(Emptiness why, uint64_t indexed);

// How many files and folders all searchable volumes hold. A volume whose lock is not free within a
// moment counts as empty.
uint64_t CountIndexed(const SearchEngine& engine);

}  // namespace quilmark
