// Any lists of extensions and any name: the table finds the rows that a plain search through the lists
// finds.
#include "platform/text.h"
#include "search/filter/extension_table.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

std::vector<uint32_t> FindPlainly(const FilterTable& table, std::u16string_view name) {
  std::vector<uint32_t> rows;
  const size_t dot = name.rfind(u'.');
  if (dot == name.npos) return rows;
  for (uint32_t row = 0; row < table.size(); ++row) {
    const auto& list = table[row].extensions;
    const bool isIn = std::any_of(list.begin(), list.end(), [&](const std::u16string& extension) {
      return FoldText(extension) == name.substr(dot);
    });
    if (isIn) rows.push_back(row);
  }
  return rows;
}

// A row of texts of UTF-16, each behind its length.
std::vector<std::u16string> TakeTexts(FuzzInput& input) {
  std::vector<std::u16string> texts;
  for (size_t count = input.Take<uint8_t>() % 8; count > 0; --count) {
    texts.push_back(UnitsOf(input.TakeBytes(input.Take<uint8_t>() % 24)));
  }
  return texts;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input = InputOf(data, size);
  FilterTable table;
  for (size_t rows = input.Take<uint8_t>() % 4; rows > 0; --rows) {
    table.push_back({.label = {}, .extensions = TakeTexts(input)});
  }
  const ExtensionTable extensions = MakeExtensionTable(table);
  for (const FilterCategory& row : table) {
    for (const std::u16string& extension : row.extensions) {
      const std::u16string name = u"x" + FoldText(extension);
      const uint32_t id = ExtensionIdOf(extensions, name);
      const auto rows = FindPlainly(table, name);
      Require((id == extensions.None()) == rows.empty());
      if (!rows.empty()) Require(extensions.categoriesById[id] == rows);
    }
  }
  const std::u16string name = FoldText(UnitsOf(input.rest));
  const uint32_t id = ExtensionIdOf(extensions, name);
  Require(id == extensions.None() ? FindPlainly(table, name).empty()
                                  : extensions.categoriesById.at(id) == FindPlainly(table, name));
  return 0;
}
