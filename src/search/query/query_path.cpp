// Paths in the search box.
#include <algorithm>
#include <optional>
#include <utility>

#include "platform/drives.h"
#include "platform/files.h"
#include "platform/text.h"
#include "search/query/query.h"

namespace quilmark {

// Up to this length a backslash at the end may belong to a root.
static constexpr size_t kRootLength = 3;

static bool IsSeparator(char16_t unit) { return unit == u'\\' || unit == u'/'; }

static std::u16string_view WithoutQuotes(std::u16string_view text) {
  if (text.size() < 2 || text.front() != text.back()) return text;
  if (text.front() != u'"' && text.front() != u'\'') return text;
  return text.substr(1, text.size() - 2);
}

// Without separators at the end; a root is "C:".
static std::u16string_view WithoutLastSeparators(std::u16string_view path) {
  while (path.size() > kRootLength && IsSeparator(path.back())) path.remove_suffix(1);
  if (path.size() == kRootLength && path[1] == u':' && IsSeparator(path[2])) path.remove_suffix(1);
  return path;
}

std::u16string NormalizePathQuery(std::u16string_view text) {
  std::u16string trimmed(text);
  TrimQuery(trimmed);
  std::u16string path(WithoutLastSeparators(WithoutQuotes(trimmed)));
  std::replace(path.begin(), path.end(), u'/', u'\\');
  return path;
}

// The index knows a folder of the host by its drive only: the path on the drive, where one holds it.
static std::u16string DrivePathOf(std::u16string path) {
  const std::optional<std::u16string> mapped = MappedPathOf(path);
  return mapped ? std::u16string(WithoutLastSeparators(*mapped)) : path;
}

// From a drive's root or the host's on. A relative path would hang on the folder that the program
// happens to run in, and would make a folder listing of a word that merely is the name of a folder
// there.
static bool IsAbsolute(std::u16string_view path) {
  if (path.starts_with(u'\\')) return true;
  return path.size() >= 2 && path[1] == u':' && (path.size() == 2 || path[2] == u'\\');
}

std::optional<std::u16string> IsExistingFolderQuery(std::u16string_view text) {
  if (text.empty() || text.starts_with(u"s:")) return std::nullopt;
  const std::u16string typed = NormalizePathQuery(text);
  if (!IsAbsolute(typed)) return std::nullopt;

  std::u16string normalized = DrivePathOf(typed);
  const bool isDrive = normalized.size() == 2;
  if (!IsExistingFolder(isDrive ? normalized + u'\\' : normalized)) return std::nullopt;
  return normalized;
}

static bool SamePathUnit(char16_t a, char16_t b) {
  return (IsSeparator(a) && IsSeparator(b)) || FoldUnit(a) == FoldUnit(b);
}

// Runs for every record of a search in the Desktop: it compares in place and builds no text.
bool PathInDesktop(std::u16string_view path, std::u16string_view folder) {
  if (path.empty() || folder.empty()) return false;
  const std::u16string_view inner = WithoutLastSeparators(path), outer = WithoutLastSeparators(folder);
  if (inner.size() < outer.size()) return false;
  if (!std::equal(outer.begin(), outer.end(), inner.begin(), SamePathUnit)) return false;
  return inner.size() == outer.size() || IsSeparator(inner[outer.size()]);
}

}  // namespace quilmark
