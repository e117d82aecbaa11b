// The extensions that the picker of a content search offers. Interface thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quilmark {

// Those of "content_search_exts.ini", each once. Where the file is missing, cannot be read or has none
// it is written anew, and these are the built-in ones.
std::vector<std::u16string> LoadPickerExts();

// Rewrites the file. What cannot be written is ignored.
void SavePickerExts(const std::vector<std::u16string>& exts);

// What is ticked at first: of LoadPickerExts those that were picked last, all where none of them was.
std::vector<std::u16string> SelectedPickerExts();

// Extensions as a user types them, between commas.
std::vector<std::u16string> ParseExtList(std::u16string_view text);

}  // namespace quilmark
