// What the list says where it has no rows.
#pragma once

#include <cstdint>
#include <string>

#include "index/engine/search_engine.h"

namespace quilmark {

struct EmptyText {
  std::u16string title, detail;

  bool operator==(const EmptyText&) const = default;
};

enum class Emptiness { kNotAsked, kNotFound, kFiltered };

// `indexed`: what a search looks through.
EmptyText EmptyListText(Emptiness why, uint64_t indexed);

// Files and folders of all searchable volumes; one that a writer holds for long counts as none.
uint64_t CountIndexed(const SearchEngine& engine);

}  // namespace quilmark
