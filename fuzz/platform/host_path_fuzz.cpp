// Any bytes as a path of the host, and any text as a path of ours: the first is made plain once and for
// all and comes back as the bytes of the same file; a drive's path names what lies below its root, and
// back.
#include <sys/stat.h>

#include <climits>
#include <vector>

#include "platform/drives.h"
#include "platform/posix/host_path.h"
#include "platform/utf.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

// Name by name, as a shell reads a path that has no links.
std::string PlainPath(std::string_view absolute) {
  std::vector<std::string> names;
  while (!absolute.empty()) {
    const size_t length = std::min(absolute.find('/'), absolute.size());
    const std::string name(absolute.substr(0, length));
    absolute.remove_prefix(std::min(length + 1, absolute.size()));
    if (name == ".." && !names.empty()) names.pop_back();
    if (!name.empty() && name != "." && name != "..") names.push_back(name);
  }
  std::string path;
  for (const std::string& name : names) path += "/" + name;
  return path.empty() ? "/" : path;
}

void CheckHostPath(std::string_view bytes) {
  const std::u16string path = PathOfHostBytes(bytes);
  const std::string plain = PlainPath(bytes);
  Require(path.starts_with(u'\\') && PathOfHostBytes(plain) == path);
  const bool hasNul = bytes.find('\0') != bytes.npos;
  if (!hasNul) Require(HostBytesOf(path) == plain);
}

// However long the path is, it is opened where it leads.
void CheckPlace(const std::string& bytes) {
  const PathEnd end = EndOfPath(bytes);
  const UniqueFd there = end.Open(O_PATH);
  if (bytes.size() >= PATH_MAX) return;
  const UniqueFd plain(open(bytes.c_str(), O_PATH | O_CLOEXEC));
  struct stat one, other;
  Require(static_cast<bool>(there) == static_cast<bool>(plain));
  if (!there) return;
  Require(fstat(there.Get(), &one) == 0 && fstat(plain.Get(), &other) == 0);
  Require(one.st_ino == other.st_ino && one.st_dev == other.st_dev);
}

// Z: stands for the path while another is asked for.
void CheckDrive(std::u16string_view root, std::u16string_view rest) {
  Require(MapDrive(u'z', root) && !MapDrive(u'1', root));
  const std::u16string onDrive = u"Z:\\" + std::u16string(rest);
  const std::u16string resolved = ResolveMappedPath(onDrive);
  Require(resolved.starts_with(*MappedRoot(u'Z')));
  const std::string& bytes = HostBytesOf(onDrive);
  Require(bytes.empty() || bytes.front() == '/');
  Require(bytes.find('\0') == bytes.npos);
  const auto back = MappedPathOf(resolved);
  Require(root.empty() || (back && ResolveMappedPath(*back) == resolved));
  UnmapDrive(u'Z');
  Require(!MappedPathOf(resolved) && ResolveMappedPath(onDrive) == onDrive);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input = InputOf(data, size);
  std::string first = input.TakeLine();
  std::erase(first, '\0');  // no system names a root with one
  CheckHostPath(input.RestAsText());
  CheckDrive(PathOfHostBytes(first), FromHostBytes(input.RestAsText()));
  CheckDrive(FromHostBytes(first), FromHostBytes(input.RestAsText()));

  CheckPlace("/" + std::string(input.RestAsText().substr(0, input.RestAsText().find('\0'))));

  const std::u16string path = UnitsOf(input.rest);
  const std::string& bytes = HostBytesOf(path);
  Require(bytes.empty() || bytes.front() == '/');
  return 0;
}
