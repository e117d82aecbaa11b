// The file user-dirs.dirs of xdg-user-dirs, which names a user's folders: lines like
// XDG_DESKTOP_DIR="$HOME/Desk".
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quilmark {

// The folder that `text` (contents of the file) gives to `key`, "XDG_DESKTOP_DIR" for example; the last
// line that gives one counts. Empty if none does, or if it gives the home folder itself, which is how
// the file says that there is no such folder. A value is quoted, with a backslash before a character
// that stands for itself, and absolute or below $HOME; other lines are passed over.
[[nodiscard]] std::optional<std::string> FindUserDir(std::string_view text, std::string_view key,
                                                     std::string_view home);

}  // namespace quilmark
