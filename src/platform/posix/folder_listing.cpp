#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

#include "platform/drive_roots.h"
#include "platform/files.h"
#include "platform/posix/host_path.h"
#include "platform/utf.h"

namespace quilmark {

namespace {

constexpr size_t kBlockBytes = 256 * 1024;  // one call for a folder of some 8,000 names
constexpr size_t kStep = sizeof(uint64_t);
constexpr uint64_t kEveryByte = 0x0101'0101'0101'0101;

// struct linux_dirent64 of getdents64(2), whose names end with a NUL and whose records are aligned to 8
// bytes.
constexpr size_t kRecordLength = 16, kRecordType = 18, kRecordName = 19;

// d_type of getdents64(2); the names DT_* come with readdir, which is not used here.
constexpr uint8_t kTypeUnknown = 0, kTypeFolder = 4;

struct Block {
  std::unique_ptr<char[]> bytes{new char[kBlockBytes]};
};

bool IsDotOrDotDot(const char* name) {
  return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

bool IsFolderByStatus(int folder, const char* name) {
  struct stat status;
  return fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
}

// 0x80 in each byte that a plain copy would get wrong: above ASCII, or (in the low one at least) a
// backslash.
uint64_t OddBytes(uint64_t step) {
  const uint64_t zeroWhereBackslash = step ^ (0x5C * kEveryByte);
  return (step | ((zeroWhereBackslash - kEveryByte) & ~zeroWhereBackslash)) & (0x80 * kEveryByte);
}

// Widens `name` to `to`. False, with anything written there, if a byte is not plain ASCII.
bool WidenPlainName(std::string_view name, char16_t* to) {
  uint64_t odd = 0;
  size_t i = 0;
  for (; name.size() - i >= kStep; i += kStep) {
    uint64_t step;
    std::memcpy(&step, name.data() + i, kStep);
    odd |= OddBytes(step);
    for (size_t k = 0; k < kStep; ++k) to[i + k] = static_cast<unsigned char>(name[i + k]);
  }
  for (; i < name.size(); ++i) {
    const auto byte = static_cast<unsigned char>(name[i]);
    odd |= static_cast<uint64_t>(byte >= 0x80 || byte == '\\');
    to[i] = byte;
  }
  return odd == 0;
}

// Writes the units of `name` to `to`, which has room for one a byte. Returns their number.
size_t PutName(std::string_view name, char16_t* to) {
  if (WidenPlainName(name, to)) return name.size();
  thread_local std::u16string units;
  units.clear();
  AppendFromHostBytes(name, units);
  std::memcpy(to, units.data(), units.size() * sizeof(char16_t));
  return units.size();
}

// Appends the records of one block. The room for names is made once a block, not once a name.
void AppendRecords(int folder, std::string_view block, FolderListing& listing) {
  size_t used = listing.names.size();
  listing.names.resize(used + block.size());
  while (!block.empty()) {
    uint16_t length;
    std::memcpy(&length, block.data() + kRecordLength, sizeof length);
    const auto type = static_cast<uint8_t>(block[kRecordType]);
    const char* name = block.data() + kRecordName;
    block.remove_prefix(length);
    if (IsDotOrDotDot(name)) continue;
    const size_t units = PutName(name, listing.names.data() + used);
    const bool isFolder =
        type == kTypeFolder || (type == kTypeUnknown && IsFolderByStatus(folder, name));
    listing.entries.push_back({static_cast<uint32_t>(used), static_cast<uint16_t>(units), isFolder});
    used += units;
  }
  listing.names.resize(used);
}

// Links are followed to the root of a drive and to a folder that is named by the host's path; below a
// drive a link is an entry and no folder, also when it takes a folder's place during a walk.
int FlagsFor(std::u16string_view path) {
  const bool isBelowDrive = IsDrivePath(path) && path.size() > 3;
  return O_RDONLY | O_DIRECTORY | (isBelowDrive ? O_NOFOLLOW : 0);
}

}  // namespace

bool ListFolder(std::u16string_view path, FolderListing& listing) {
  thread_local const Block block;
  listing.Clear();
  const UniqueFd folder = EndOfPath(HostBytesOf(path)).Open(FlagsFor(path));
  if (!folder) return false;
  for (;;) {
    const long count = syscall(SYS_getdents64, folder.Get(), block.bytes.get(), kBlockBytes);
    if (count <= 0) return count == 0;
    AppendRecords(folder.Get(), {block.bytes.get(), static_cast<size_t>(count)}, listing);
  }
}

}  // namespace quilmark
