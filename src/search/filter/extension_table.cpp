#include "search/filter/extension_table.h"

#include <algorithm>
#include <bit>
#include <optional>

#include "platform/text.h"

namespace quilmark {

namespace {

constexpr size_t kMostPacked = 4;
constexpr uint64_t kEveryUnit = 0x0001'0001'0001'0001, kTopBits = 0x8000 * kEveryUnit;

// The last four units, the last one uppermost.
uint64_t LastUnits(std::u16string_view text) {
  const char16_t* const units = text.data() + text.size() - kMostPacked;
  return uint64_t{units[0]} | uint64_t{units[1]} << 16 | uint64_t{units[2]} << 32 |
         uint64_t{units[3]} << 48;
}

// The units behind the dot, the last one uppermost of those that are there. A NUL at the end would look
// like a shorter extension.
std::optional<uint64_t> Pack(std::u16string_view extension) {
  const std::u16string_view units = extension.substr(1);
  if (units.size() > kMostPacked || units.ends_with(u'\0')) return std::nullopt;
  uint64_t packed = 0;
  for (size_t i = units.size(); i-- > 0;) packed = packed << 16 | units[i];
  return packed;
}

// The same of a whole name, without a loop: nearly all extensions are that short. Empty where the last
// dot stands further from the end, or nowhere. REQUIRES more than four units, the last one no NUL.
std::optional<uint64_t> PackEnd(std::u16string_view name) {
  const uint64_t last = LastUnits(name), noDot = last ^ u'.' * kEveryUnit;
  // The top bit of each unit that is a dot, and of no other: no sum carries into the next unit.
  const uint64_t dots = ~(((noDot & ~kTopBits) + ~kTopBits) | noDot) & kTopBits;
  if (dots != 0) {
    const int behind = 64 - std::countl_zero(dots);  // bits up to the dot, with it
    return behind == 64 ? 0 : last >> behind;
  }
  if (name[name.size() - kMostPacked - 1] != u'.') return std::nullopt;
  return last;
}

uint32_t FindPacked(const ExtensionTable& table, uint64_t packed) {
  const auto found = table.packed.find(packed);
  return found == table.packed.end() ? table.None() : found->second;
}

uint32_t Find(const ExtensionTable& table, std::u16string_view extension) {
  if (const auto packed = Pack(extension)) return FindPacked(table, *packed);
  const auto found = table.longer.find(extension);
  return found == table.longer.end() ? table.None() : found->second;
}

uint32_t FindOrAdd(ExtensionTable& table, const std::u16string& extension) {
  const uint32_t id = Find(table, extension);
  if (id != table.None()) return id;
  if (const auto packed = Pack(extension)) {
    table.packed.emplace(*packed, id);
  } else {
    table.longer.emplace(extension, id);
  }
  table.longest = std::max(table.longest, extension.size());
  table.categoriesById.emplace_back();
  return id;
}

}  // namespace

ExtensionTable MakeExtensionTable(std::span<const FilterCategory> categories) {
  ExtensionTable table;
  for (uint32_t category = 0; category < categories.size(); ++category) {
    for (const std::u16string& given : categories[category].extensions) {
      const std::u16string extension = FoldText(given);
      if (!extension.starts_with(u'.')) continue;
      std::vector<uint32_t>& naming = table.categoriesById[FindOrAdd(table, extension)];
      if (naming.empty() || naming.back() != category) naming.push_back(category);
    }
  }
  return table;
}

uint32_t ExtensionIdOf(const ExtensionTable& table, std::u16string_view foldedName) {
  if (foldedName.size() > kMostPacked && foldedName.back() != u'\0') {
    if (const auto packed = PackEnd(foldedName)) return FindPacked(table, *packed);
    if (table.longer.empty()) return table.None();
  }
  // A dot further from the end than any extension is long cannot be that of a category.
  const size_t first = foldedName.size() - std::min(foldedName.size(), table.longest);
  for (size_t dot = foldedName.size(); dot-- > first;) {
    if (foldedName[dot] == u'.') return Find(table, foldedName.substr(dot));
  }
  return table.None();
}

}  // namespace quilmark
