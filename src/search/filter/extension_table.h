// Categories turned around: from an extension to the categories that name it, by one look in a hash map.
#pragma once

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "search/filter/filter_categories.h"

namespace quilmark {

struct TextHash {
  using is_transparent = void;
  size_t operator()(std::u16string_view text) const { return std::hash<std::u16string_view>()(text); }
};

struct ExtensionTable {
  // Up to four units behind the dot, which nearly all have, as one number; the others as a text.
  boost::unordered_flat_map<uint64_t, uint32_t> packed;
  boost::unordered_flat_map<std::u16string, uint32_t, TextHash, std::equal_to<>> longer;
  size_t longest = 0;                                 // units of the longest extension, with its dot
  std::vector<std::vector<uint32_t>> categoriesById;  // positions of the categories, ascending
  uint32_t None() const { return static_cast<uint32_t>(categoriesById.size()); }
};

// Numbers the extensions of the categories from 0. Only what begins with a dot can match.
ExtensionTable MakeExtensionTable(std::span<const FilterCategory> categories);

// The number of what stands from the last dot of a folded name on; None() if no category names it.
uint32_t ExtensionIdOf(const ExtensionTable& table, std::u16string_view foldedName);

}  // namespace quilmark
