// The text files of the configuration directory that hold what the user chose. Any thread, but one file
// is read and written by one thread at a time.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace quilmark {

// The text of the file of that name, empty where there is none. One that is there and cannot be read,
// also not within a fifth of a second, counts as empty too, and is then left alone by WriteSettingsFile
// until it was read: it holds the user's choices, and the program its defaults.
std::u16string ReadSettingsFile(std::u16string_view name);

// What a read waits by before it tries again: SleepMs, unless a test does without.
extern void (*pauseBeforeRereading)(uint32_t ms);

// Whether the file was there at the latest ReadSettingsFile and could not be read.
bool IsUnreadSettingsFile(std::u16string_view name);

// Rewrites the file of that name. False where it is left alone, and on any failure. The result may be
// dropped: a setting that is not saved is in force until the program ends. A file that has this text,
// and has it on the disk as far as the program knows, is not written: waiting for a disk takes longer
// than a frame of the window.
bool WriteSettingsFile(std::u16string_view name, std::u16string_view text,
                       Flushing flushing = Flushing::kWaited);

}  // namespace quilmark
