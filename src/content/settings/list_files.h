// The three list files of content search, as texts: what they hold, and what is written where one is
// missing. They are edited by hand, so that reading forgives.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quilmark {

// One kind of file.
struct ListFile {
  std::u16string_view name;      // in the configuration directory
  std::u16string_view key;       // may stand in front of the items of a line
  std::u16string_view comments;  // lines that a file written by the program begins with
  std::span<const std::u16string_view> defaults;
};

// "content_zip_exts.ini": extensions that are read as archives.
const ListFile& ZipExtsFile();
// "content_zip_inner_patterns.ini": which entries of them are read.
const ListFile& InnerPatternsFile();
// "content_search_exts.ini": extensions that the picker offers.
const ListFile& PickerExtsFile();

// A file's items in their order: what stands between commas, trimmed, of lines that do not begin with
// "#", without the key in front. A line of more than 2,047 units comes in pieces. Items may be empty.
std::vector<std::u16string> ListItems(std::u16string_view text, const ListFile& file);

// The extensions among them: in lower case, with a dot in front. Those of no more than a dot are
// dropped.
std::vector<std::u16string> ExtensionItems(std::u16string_view text, const ListFile& file);

// The patterns among them: UTF-8, ASCII letters in lower case, no empty ones.
std::vector<std::string> PatternItems(std::u16string_view text);

// Items without those that an earlier one equals but for case.
std::vector<std::u16string> WithoutRepeats(const std::vector<std::u16string>& items);

// The text of a file: its comments, then the items, in one line behind the key.
std::u16string ListText(const ListFile& file, const std::vector<std::u16string>& items);

// The text of a new file of entry patterns: its comments, then a line for each default.
std::u16string DefaultPatternsText();

// The defaults as a list.
std::vector<std::u16string> DefaultItems(const ListFile& file);

}  // namespace quilmark
