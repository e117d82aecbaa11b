#include "platform/posix/host_path.h"

#include <algorithm>
#include <climits>
#include <memory>

#include "platform/drive_roots.h"
#include "platform/utf.h"

namespace quilmark {

namespace {

constexpr mode_t kNewFileMode = 0666;  // the user's mask takes its part
constexpr size_t kLongestCall = PATH_MAX - 1;

// Appends `path` with "/" for each backslash. False, with nothing appended, unless all of it is ASCII.
bool AppendPlainPath(std::u16string_view path, std::string& bytes) {
  const size_t start = bytes.size();
  bytes.resize(start + path.size());
  char* const to = bytes.data() + start;
  unsigned units = 0;
  for (size_t i = 0; i < path.size(); ++i) {
    units |= path[i];
    to[i] = path[i] == u'\\' ? '/' : static_cast<char>(path[i]);
  }
  if (units < 0x80) return true;
  bytes.resize(start);
  return false;
}

// Appends `path` with "/" for each backslash. A name is converted by itself, so that the one that stands
// for a backslash inside it stays apart from the separators.
void AppendHostBytes(std::u16string_view path, std::string& bytes) {
  if (AppendPlainPath(path, bytes)) return;
  while (!path.empty()) {
    const char16_t unit = path.front();
    if (unit < 0x80) {
      bytes.push_back(unit == u'\\' ? '/' : static_cast<char>(unit));
      path.remove_prefix(1);
      continue;
    }
    const size_t length = std::min(path.find(u'\\'), path.size());
    bytes += ToHostBytes(path.substr(0, length));
    path.remove_prefix(length);
  }
}

bool HoldsNul(std::u16string_view path) { return path.find(u'\0') != path.npos; }

}  // namespace

const std::string& HostBytesOf(std::u16string_view path) {
  thread_local std::string bytes;
  bytes.clear();
  if (HoldsNul(path)) return bytes;
  if (IsDrivePath(path)) {
    const std::shared_ptr<const std::u16string> root = SharedRootOf(path[0]);
    if (root == nullptr || !root->starts_with(u'\\')) return bytes;
    AppendHostBytes(*root, bytes);
    path.remove_prefix(2);
    if (path.size() <= 1) return bytes;
    if (bytes.back() == '/') bytes.pop_back();  // the rest brings a separator of its own
  }
  if (path.starts_with(u'\\')) AppendHostBytes(path, bytes);
  return bytes;
}

std::u16string PathOfHostBytes(std::string_view absolute) {
  std::u16string path;
  while (!absolute.empty()) {
    const size_t length = std::min(absolute.find('/'), absolute.size());
    const std::string_view name = absolute.substr(0, length);
    absolute.remove_prefix(std::min(length + 1, absolute.size()));
    if (name == "..") {
      path.resize(path.empty() ? 0 : path.rfind(u'\\'));
    } else if (!name.empty() && name != ".") {
      path += u'\\';
      AppendFromHostBytes(name, path);
    }
  }
  return path.empty() ? u"\\" : path;
}

UniqueFd PathEnd::Open(int flags) const {
  return UniqueFd(openat(folder, name, flags | O_CLOEXEC, kNewFileMode));
}

PathEnd EndOfPath(const std::string& bytes) {
  PathEnd end;
  size_t start = 0;
  while (bytes.size() - start > kLongestCall) {
    const size_t slash = bytes.rfind('/', start + kLongestCall);
    if (slash == bytes.npos || slash <= start) return end;  // a name that no file system holds
    const std::string piece = bytes.substr(start, slash - start);
    UniqueFd next(openat(end.folder, piece.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!next) return end;
    end.owner = std::move(next);
    end.folder = end.owner.Get();
    start = bytes.find_first_not_of('/', slash);
    if (start == bytes.npos) start = bytes.size();
  }
  end.name = bytes.c_str() + start;
  return end;
}

}  // namespace quilmark
