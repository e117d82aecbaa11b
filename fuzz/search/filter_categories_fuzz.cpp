// Any bytes as filters.ini: labels and extensions are plain, what is written reads back as it was, and
// the table that a start takes is never empty, has its row of folders, and settles.
#include "platform/text.h"
#include "platform/text_file.h"
#include "search/filter/filter_categories.h"
#include "support/config_folder.h"

using namespace quilmark;

namespace {

bool HasFolderRow(const FilterTable& table) {
  return std::any_of(table.begin(), table.end(), IsFolderCategory);
}

void CheckTable(const FilterTable& table) {
  for (const FilterCategory& row : table) {
    Require(!row.label.empty() && TrimText(row.label) == row.label);
    Require(row.label.find_first_of(u"=\n") == std::u16string::npos && !row.label.starts_with(u'#'));
    for (const std::u16string& extension : row.extensions) {
      Require(extension.starts_with(u'.') && FoldText(extension) == extension);
      Require(extension.find(u',') == std::u16string::npos);
    }
  }
}

void CheckStart(const ConfigFolder& folder, std::u16string_view language, bool chinese) {
  const FilterTable beside = ReadFilterCategories(language, chinese);
  LoadFilterCategories(language, chinese);
  const FilterTable taken = *CurrentCategories();
  Require(!taken.empty() && HasFolderRow(taken) && HasFolderRow(beside));
  // A table that another language has left behind gives way to the defaults.
  Require(taken == beside || taken == DefaultCategories(chinese));
  Require(folder.Has("filters.bak") || folder.Has("filters.ini") || folder.Has("filters.en-us.ini"));
  LoadFilterCategories(language, chinese);
  const FilterTable again = *CurrentCategories();
  // A copy is taken whatever its language, and then stands where the language is looked at.
  Require(again == taken || again == DefaultCategories(chinese));
  LoadFilterCategories(language, chinese);
  Require(*CurrentCategories() == again && ReadFilterCategories(language, chinese) == again);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const ConfigFolder folder;
  FuzzInput input = InputOf(data, size);
  const auto flags = input.Take<uint8_t>();
  const std::string_view bytes = input.RestAsText();
  const FilterTable table = ReadCategories(DecodeText(bytes));
  CheckTable(table);
  Require(ReadCategories(CategoriesText(table)) == table);

  constexpr const char* kNames[] = {"filters.ini", "filters.en-us.ini", "filters.bak"};
  for (const char* name : kNames) folder.Remove(name);
  folder.Write(kNames[flags % 3], bytes);
  CheckStart(folder, (flags & 4) != 0 ? u"en-US" : u"", (flags & 8) != 0);
  return 0;
}
