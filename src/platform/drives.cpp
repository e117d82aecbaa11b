#include "platform/drives.h"

#include <array>
#include <atomic>
#include <memory>
#include <mutex>
#include <shared_mutex>

#include "platform/drive_roots.h"
#include "platform/files.h"
#include "platform/locks.h"
#include "platform/ntfs/image_info.h"
#include "platform/text.h"

namespace quilmark {

namespace {

using Root = std::shared_ptr<const std::u16string>;
constexpr size_t kLetters = 26;

struct DriveMap {
  OrderedLock lock{LockRank::kLeaf, "drive map"};
  std::array<Root, kLetters> roots;  // guarded by `lock`; null: not mapped
  std::atomic<uint32_t> mask = 0;    // letters with a root; written under `lock`
};

// Never destroyed: detached threads resolve paths until the process is gone.
DriveMap& Drives() {
  static DriveMap& drives = *new DriveMap;
  return drives;
}

std::optional<size_t> IndexOfLetter(char16_t letter) {
  if (letter >= u'A' && letter <= u'Z') return static_cast<size_t>(letter - u'A');
  if (letter >= u'a' && letter <= u'z') return static_cast<size_t>(letter - u'a');
  return std::nullopt;
}

constexpr uint32_t BitOf(size_t index) { return uint32_t{1} << index; }

// A lone separator and the one behind "X:" are the root itself and stay.
std::u16string_view WithoutTrailingSeparators(std::u16string_view root) {
  while (root.size() > 1 && root.back() == u'\\' && root[root.size() - 2] != u':') root.remove_suffix(1);
  return root;
}

std::u16string JoinedPath(std::u16string_view root, std::u16string_view rest) {
  while (!rest.empty() && rest.front() == u'\\') rest.remove_prefix(1);
  std::u16string path;
  path.reserve(root.size() + 1 + rest.size());
  path = root;
  if (rest.empty()) return path;
  if (path.empty() || path.back() != u'\\') path += u'\\';
  return path.append(rest);
}

// What follows `root` in `hostPath`, a separator in front left out; empty if the path is not at or below
// it.
std::optional<std::u16string_view> RestBelow(std::u16string_view root, std::u16string_view hostPath) {
  if (root.empty() || root.size() > hostPath.size() || !IsHostPathPrefix(root, hostPath)) {
    return std::nullopt;
  }
  std::u16string_view rest = hostPath.substr(root.size());
  const bool endsAtName = rest.empty() || root.back() == u'\\' || rest.front() == u'\\';
  if (!endsAtName) return std::nullopt;
  if (!rest.empty() && rest.front() == u'\\') rest.remove_prefix(1);
  return rest;
}

// Puts `root` in the place of the letter's; the former one dies outside the lock.
void SetRoot(size_t index, Root root) {
  DriveMap& drives = Drives();
  std::unique_lock lock(drives.lock);
  drives.roots[index].swap(root);
  const uint32_t others = drives.mask.load(std::memory_order_relaxed) & ~BitOf(index);
  drives.mask.store(others | (drives.roots[index] ? BitOf(index) : 0), std::memory_order_release);
}

}  // namespace

std::shared_ptr<const std::u16string> SharedRootOf(char16_t letter) {
  const std::optional<size_t> index = IndexOfLetter(letter);
  DriveMap& drives = Drives();
  if (!index || (drives.mask.load(std::memory_order_acquire) & BitOf(*index)) == 0) return nullptr;
  std::shared_lock lock(drives.lock);
  return drives.roots[*index];
}

bool MapDrive(char16_t letter, std::u16string_view root) {
  const std::optional<size_t> index = IndexOfLetter(letter);
  if (!index) return false;
  SetRoot(*index, std::make_shared<const std::u16string>(WithoutTrailingSeparators(root)));
  return true;
}

void UnmapDrive(char16_t letter) {
  if (const std::optional<size_t> index = IndexOfLetter(letter)) SetRoot(*index, nullptr);
}

std::optional<std::u16string> MappedRoot(char16_t letter) {
  const Root root = SharedRootOf(letter);
  if (root == nullptr) return std::nullopt;
  return *root;
}

std::u16string ResolveMappedPath(std::u16string_view path) {
  if (IsDrivePath(path)) {
    if (const Root root = SharedRootOf(path[0])) return JoinedPath(*root, path.substr(2));
  }
  return std::u16string(path);
}

std::optional<std::u16string> MappedPathOf(std::u16string_view hostPath) {
  std::optional<std::u16string> mapped;
  size_t deepest = 0;
  for (char16_t letter = u'A'; letter <= u'Z'; ++letter) {
    const Root root = SharedRootOf(letter);
    if (root == nullptr || root->size() <= deepest) continue;
    const std::optional<std::u16string_view> rest = RestBelow(*root, hostPath);
    if (!rest) continue;
    deepest = root->size();
    mapped = std::u16string({letter, u':', u'\\'}).append(*rest);
  }
  return mapped;
}

uint32_t LogicalDriveMask() {
  const uint32_t mapped = Drives().mask.load(std::memory_order_acquire);
  return mapped != 0 ? mapped : SystemDriveMask();
}

std::u16string_view FileSystemToRead(std::u16string_view reported, const DriveTarget& target) {
  if (!EqualNoCase(reported, kNtfs)) return reported;
  const bool isSubstitute = target.device.starts_with(u"\\??\\");
  return target.isRemote || isSubstitute ? kNtfsElsewhere : reported;
}

std::optional<VolumeInfo> ReadVolumeInfo(char16_t letter) {
  if (Drives().mask.load(std::memory_order_acquire) == 0) return VolumeInfoOfSystemDrive(letter);
  const Root root = SharedRootOf(letter);
  if (root == nullptr) return std::nullopt;
  if (auto info = VolumeInfoOfMappedFolder(*root)) return info;
  return VolumeInfoOfImage(SystemPathOfRoot(*root));
}

bool HasDriveRoot(char16_t letter) {
  if (Drives().mask.load(std::memory_order_acquire) == 0) return HasSystemDriveRoot(letter);
  return SharedRootOf(letter) != nullptr;
}

uint32_t AnsweringDriveMask() {
  if (Drives().mask.load(std::memory_order_acquire) == 0) return AnsweringSystemDriveMask();
  uint32_t mask = 0;
  for (size_t index = 0; index < kLetters; ++index) {
    const Root root = SharedRootOf(static_cast<char16_t>(u'A' + index));
    if (root != nullptr && IsExistingPath(SystemPathOfRoot(*root))) mask |= BitOf(index);
  }
  return mask;
}

uint32_t SerialOfFolder(uint64_t volume, uint64_t folder) {
  // The finaliser of splitmix64: each input bit reaches the low 32.
  uint64_t mixed = volume ^ (folder * 0x9E37'79B9'7F4A'7C15);
  mixed = (mixed ^ (mixed >> 30)) * 0xBF58'476D'1CE4'E5B9;
  mixed = (mixed ^ (mixed >> 27)) * 0x94D0'49BB'1331'11EB;
  return static_cast<uint32_t>(mixed ^ (mixed >> 31));
}

}  // namespace quilmark
