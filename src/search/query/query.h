// What the text of the search box means.
//
// Trimmed text is, in this order: nothing; a content query ("s:..."); the path of an existing folder,
// which lists it; a name query, an OR of AND-groups of substrings. Nothing here touches the disk but
// IsExistingFolderQuery.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quilmark {

// An OR of groups; a group is an AND of terms.
using QueryGroups = std::vector<std::vector<std::u16string>>;

struct ContentQuery {
  bool Active = false;               // the text is a valid content query
  QueryGroups Groups;                // what to look for inside files; terms keep their case
  std::vector<std::u16string> Exts;  // lower-case, each with its "."; the files to open
};

// Removes blanks, tabs, CR and LF at both ends.
void TrimQuery(std::u16string& text);

// Splits at " and " and " or " outside quotes; "\" takes the next character as it is. Terms keep their
// case.
QueryGroups ParseQueryGroups(std::u16string_view text);

// Terms folded, trimmed, and dropped where empty; groups dropped where empty. No groups: every name
// matches. A backslash becomes kNameBackslash (utf.h), which is what a name holds in its place.
QueryGroups PrepareNameGroups(QueryGroups groups);

// `defaultExts` serves a query without "|".
ContentQuery ParseContentQuery(std::u16string_view text, const std::vector<std::u16string>& defaultExts);

// The trimmed text begins with "s:" or "S:".
bool IsContentPrefix(std::u16string_view text);

// Quotes off, "/" to "\", no "\" at the end; a root is "C:".
std::u16string NormalizePathQuery(std::u16string_view text);

// The normalised path if the text names a folder that exists, from the root of a drive or of the host
// on; else empty. Asks the disk.
[[nodiscard]] std::optional<std::u16string> IsExistingFolderQuery(std::u16string_view text);

// `terms` are folded, and so is `name`.
bool HoldsAllTerms(std::u16string_view name, const std::vector<std::u16string>& terms);

// One group has every term in it. `lowerName` is the folded name, tested up to its first NUL if it holds
// one.
bool MatchName(std::u16string_view lowerName, const QueryGroups& groups);

// `path` is the folder `folder` or lies below it, ignoring case. False where either is empty.
bool PathInDesktop(std::u16string_view path, std::u16string_view folder);

}  // namespace quilmark
