#include "shell/actions/shell_paths.h"

#include "platform/text.h"

namespace quilmark {

namespace {

constexpr size_t kRootLength = 3;  // "C:\"

bool IsDriveRooted(std::u16string_view path) {
  const char16_t letter = path.empty() ? u'\0' : FoldUnit(path[0]);
  return path.size() >= kRootLength && letter >= u'a' && letter <= u'z' && path[1] == u':' &&
         path[2] == u'\\';
}

// True if `accepts` is true of each name of the path behind its root.
template <typename Test>
bool AllNames(std::u16string_view path, Test accepts) {
  for (std::u16string_view rest = path.substr(kRootLength);;) {
    const size_t end = rest.find(u'\\');
    if (!accepts(rest.substr(0, end))) return false;
    if (end == rest.npos) return true;
    rest = rest.substr(end + 1);
  }
}

bool IsDeletableName(std::u16string_view name) {
  const bool isWay = name.empty() || name == u"." || name == u"..";
  return !isWay && name.find_first_of(std::u16string_view(u":/\0", 3)) == name.npos;
}

bool IsPlainName(std::u16string_view name) {
  return name.find_first_of(u"*?\"<>|") == name.npos && name.back() != u'.' && name.back() != u' ';
}

}  // namespace

std::u16string QuotePathForShell(std::u16string_view path) {
  if (path.find_first_of(u" \t\"") == path.npos) return std::u16string(path);
  std::u16string quoted = u"\"";
  size_t backslashes = 0;
  for (const char16_t unit : path) {
    if (unit == u'"') quoted.append(backslashes + 1, u'\\');
    backslashes = unit == u'\\' ? backslashes + 1 : 0;
    quoted.push_back(unit);
  }
  quoted.append(backslashes, u'\\');
  quoted.push_back(u'"');
  return quoted;
}

std::u16string SelectArguments(std::u16string_view path) {
  return u"/select,\"" + std::u16string(path) + u"\"";
}

std::optional<std::u16string> ParentOfPath(std::u16string_view path) {
  const size_t slash = path.rfind(u'\\');
  if (slash == path.npos || slash + 1 == path.size()) return std::nullopt;
  // The root keeps its backslash: "C:" alone would be another folder.
  const bool isInRoot = slash + 1 == kRootLength && path[1] == u':';
  return std::u16string(path.substr(0, isInRoot ? kRootLength : slash));
}

std::vector<std::u16string> SiblingsOfFirst(const std::vector<std::u16string>& paths) {
  std::vector<std::u16string> siblings;
  if (paths.empty()) return siblings;
  const auto folder = ParentOfPath(paths.front());
  siblings.push_back(paths.front());
  for (auto path = paths.begin() + 1; path != paths.end(); ++path) {
    const auto other = ParentOfPath(*path);
    if (folder && other && EqualNoCase(*folder, *other)) siblings.push_back(*path);
  }
  return siblings;
}

bool IsBelow(std::u16string_view path, std::u16string_view folder) {
  return path.size() > folder.size() && path.starts_with(folder) && path[folder.size()] == u'\\';
}

bool IsDeletablePath(std::u16string_view path) {
  return IsDriveRooted(path) && AllNames(path, IsDeletableName);
}

bool IsPlainPath(std::u16string_view path) { return AllNames(path, IsPlainName); }

bool IsShellPath(std::u16string_view path) {
  if (!IsDriveRooted(path)) return false;
  const std::u16string_view belowRoot = path.substr(kRootLength);
  if (belowRoot.empty() || belowRoot == u".") return true;
  return IsDeletablePath(path) && IsPlainPath(path);
}

}  // namespace quilmark
