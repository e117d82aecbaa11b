// What the actions on files ask and tell the user, in the interface's language.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "shell/actions/shell_port.h"

namespace quilmark {

// So many files are opened without a question.
inline constexpr size_t kMostOpenedAtOnce = 15;

// Whether so many files shall be opened.
BoxText OpenManyQuestion(size_t count);

// Whether the files shall be deleted for good: names a single one, counts several. REQUIRES one.
BoxText DeleteQuestion(const std::vector<std::u16string>& paths);

// Whether the filter tags shall be reset.
BoxText ResetFiltersQuestion();

// What is said when they are.
BoxText ResetDoneNotice();

// Files could not be put on the clipboard.
std::u16string ClipboardFailedText();

// A file is still there: neither the Recycle Bin nor any other way has taken it.
std::u16string RecycleFailedText();

// So many files are still there.
std::u16string DeleteFailedText(size_t count);

}  // namespace quilmark
