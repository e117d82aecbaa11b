// Paths as the shell of the system is given them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quilmark {

// The path as one argument of a command line: as it is if it holds no blank, tab or quotation mark, else
// in quotation marks, with backslashes where the usual splitting of a command line needs them.
std::u16string QuotePathForShell(std::u16string_view path);

// What the file manager is told so that it opens the folder of the path and selects it there.
std::u16string SelectArguments(std::u16string_view path);

// The folder that holds the path; that of "C:\a" is "C:\". Empty for a root, and for a text without a
// backslash.
[[nodiscard]] std::optional<std::u16string> ParentOfPath(std::u16string_view path);

// The first path, and those of the others that lie in the same folder, whatever their case.
std::vector<std::u16string> SiblingsOfFirst(const std::vector<std::u16string>& paths);

// True if the path lies below the folder, at any depth. Both are in the form of ComparablePath.
bool IsBelow(std::u16string_view path, std::u16string_view folder);

// True for the path of a file or folder below the root of a drive that names nothing else: no stream of
// a file ("a:b"), and no way up or back to the root itself. What is not one is never deleted.
bool IsDeletablePath(std::u16string_view path);

// True if all of the system, old calls among it, takes the path for the one file that it names: no name
// of it holds a wildcard, or ends with a dot or a blank, which such calls take off. REQUIRES
// IsDeletablePath.
bool IsPlainPath(std::u16string_view path);

// True if the shell takes the path for the one file that it names: the root of a drive, or a plain path
// below it. Any other is kept from the shell, which would do what was asked to another file.
bool IsShellPath(std::u16string_view path);

}  // namespace quilmark
