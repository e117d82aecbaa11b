// The categories of the filter bar: named lists of extensions, which a user may edit in filters.ini.
// Interface thread, but where another is named.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quilmark {

struct FilterCategory {
  std::u16string label;
  std::vector<std::u16string>
      extensions;  // lower-case, each with its "."; the first has none and means all

  bool operator==(const FilterCategory&) const = default;
};
using FilterTable = std::vector<FilterCategory>;

// Holds ".dir" or ".folder": it selects folders.
bool IsFolderCategory(const FilterCategory& category);

// The table of a user who has none, with labels in Chinese or English.
FilterTable DefaultCategories(bool chinese);

// One "label=.ext1,.ext2" a line, of any length. Lines without a label are ignored.
FilterTable ReadCategories(std::u16string_view text);

// The text of such a file.
std::u16string CategoriesText(const FilterTable& table);

// The table in force; never null, never empty. Any thread.
std::shared_ptr<const FilterTable> CurrentCategories();

// Puts another table in force. REQUIRES one with a category. Any thread.
void InstallCategories(FilterTable table);

// Takes the table of the language's file, else that of filters.ini, else its copy, else the defaults;
// gives it a category for folders; writes what is missing. `language` may be empty.
void LoadFilterCategories(std::u16string_view language, bool chinese);

// Path of filters.ini, for whoever edits it by hand; the defaults are written to it first where there is
// none, which may fail.
std::u16string PathOfFilterFile(bool chinese);

// Has the next LoadFilterCategories take the defaults; what is in force stays. False if they could not
// be written.
[[nodiscard]] bool ResetFilterCategories(std::u16string_view language, bool chinese);

// The table that LoadFilterCategories would take, for a program beside the window: nothing is written,
// and a table that another language has left behind stays as it is.
FilterTable ReadFilterCategories(std::u16string_view language, bool chinese);

}  // namespace quilmark
