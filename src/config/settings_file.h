// The text files of the configuration directory that hold what the user chose. Interface thread.
#pragma once

#include <string>
#include <string_view>

namespace quilmark {

// The text of the file of that name, empty where there is none. One that is there and cannot be read at
// the moment counts as empty too, and is then left alone by WriteSettingsFile until it was read: it
// holds the user's choices, and the program its defaults.
std::u16string ReadSettingsFile(std::u16string_view name);

// True for such a file.
bool IsUnreadSettingsFile(std::u16string_view name);

// False where it is left alone, and on any failure.
bool WriteSettingsFile(std::u16string_view name, std::u16string_view text);

}  // namespace quilmark
