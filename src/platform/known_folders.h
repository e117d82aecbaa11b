// Folders that the system names; none is created here. Any thread.
#pragma once

#include <optional>
#include <string>

namespace quilmark {

// The user's documents. On a POSIX host XDG_DOCUMENTS_DIR of user-dirs.dirs, if that file names one.
// Windows names it once in some seconds and not at each line of a log; a POSIX host is asked at every
// call.
[[nodiscard]] std::optional<std::u16string> DocumentsFolder();

// The user's local application data, kept likewise. On a POSIX host $XDG_DATA_HOME, if it is set to an
// absolute path.
[[nodiscard]] std::optional<std::u16string> LocalDataFolder();

// Has the two above asked for again: for who finds one gone, or cannot write below it. A user may move
// them while the program runs.
void ForgetKnownFolders();

// With a trailing backslash, as Windows gives it; empty if the system names none shorter than 260
// characters.
[[nodiscard]] std::optional<std::u16string> TempFolder();

// The user's desktop. On a POSIX host XDG_DESKTOP_DIR of user-dirs.dirs. Where the folder lies below a
// mapped drive, the path is the one on that drive ("C:\me\Desktop").
[[nodiscard]] std::optional<std::u16string> DesktopFolder();

// An environment variable as text; empty if it is not set.
[[nodiscard]] std::optional<std::u16string> EnvironmentText(const char* name);

}  // namespace quilmark
