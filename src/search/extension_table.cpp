#include "search/extension_table.h"

#include <algorithm>
#include <optional>

#include "platform/text.h"

namespace quilmark {

namespace {

constexpr size_t kMostPacked = 4;

// The units behind the dot, as one number. A NUL at the end would look like a shorter extension.
std::optional<uint64_t> Pack(std::u16string_view extension) {
  const std::u16string_view units = extension.substr(1);
  if (units.size() > kMostPacked || units.ends_with(u'\0')) return std::nullopt;
  uint64_t packed = 0;
  for (const char16_t unit : units) packed = packed << 16 | unit;
  return packed;
}

uint32_t Find(const ExtensionTable& table, std::u16string_view extension) {
  if (const auto packed = Pack(extension)) {
    const auto found = table.packed.find(*packed);
    return found == table.packed.end() ? table.None() : found->second;
  }
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
  table.rowsById.emplace_back();
  return id;
}

}  // namespace

ExtensionTable MakeExtensionTable(std::span<const FilterCategory> categories) {
  ExtensionTable table;
  for (uint32_t row = 0; row < categories.size(); ++row) {
    for (const std::u16string& given : categories[row].extensions) {
      const std::u16string extension = FoldText(given);
      if (!extension.starts_with(u'.')) continue;
      std::vector<uint32_t>& rows = table.rowsById[FindOrAdd(table, extension)];
      if (rows.empty() || rows.back() != row) rows.push_back(row);
    }
  }
  return table;
}

uint32_t ExtensionIdOf(const ExtensionTable& table, std::u16string_view foldedName) {
  // A dot further from the end than any extension is long cannot be that of a category.
  const size_t first = foldedName.size() - std::min(foldedName.size(), table.longest);
  for (size_t dot = foldedName.size(); dot-- > first;) {
    if (foldedName[dot] == u'.') return Find(table, foldedName.substr(dot));
  }
  return table.None();
}

}  // namespace quilmark
