#include <sys/stat.h>
#include <sys/statfs.h>

#include <cstring>

#include "platform/drive_roots.h"
#include "platform/posix/host_path.h"

namespace quilmark {

namespace {

struct FileSystemRow {
  uint32_t magic;
  const char16_t* name;
};

// f_type of statfs(2); the numbers are those of linux/magic.h and of the file systems' own headers.
constexpr FileSystemRow kFileSystems[] = {
    {0xEF53, u"ext4"},          {0x5846'5342, u"xfs"},     {0x9123'683E, u"btrfs"},
    {0x0102'1994, u"tmpfs"},    {0x794C'7630, u"overlay"}, {0x6969, u"nfs"},
    {0xFF53'4D42, u"cifs"},     {0xFE53'4D42, u"cifs"},    {0x517B, u"cifs"},
    {0x7366'746E, u"ntfs3"},    {0x5346'544E, u"ntfs"},    {0x6573'5546, u"fuse"},
    {0x4D44, u"vfat"},          {0x2011'BAB0, u"exfat"},   {0xF2F5'2010, u"f2fs"},
    {0x2FC1'2FC1, u"zfs"},      {0x9660, u"iso9660"},      {0x1501'3346, u"udf"},
    {0x7371'7368, u"squashfs"}, {0x0102'1997, u"9p"},      {0x9FA0, u"proc"},
    {0x6265'6572, u"sysfs"},    {0x8584'58F6, u"ramfs"},   {0xCA45'1A4E, u"bcachefs"},
};

const char16_t* NameOfFileSystem(uint32_t magic) {
  for (const FileSystemRow& row : kFileSystems) {
    if (row.magic == magic) return row.name;
  }
  return u"unknown";
}

// The identity that the file system keeps over a restart, or its device number where it keeps none.
uint64_t IdentityOf(const struct statfs& volume, dev_t device) {
  uint64_t identity = 0;
  static_assert(sizeof identity == sizeof volume.f_fsid);
  std::memcpy(&identity, &volume.f_fsid, sizeof identity);
  return identity != 0 ? identity : static_cast<uint64_t>(device);
}

}  // namespace

uint32_t SystemDriveMask() { return 0; }

uint32_t AnsweringSystemDriveMask() { return 0; }

bool HasSystemDriveRoot(char16_t) { return false; }

std::optional<VolumeInfo> VolumeInfoOfSystemDrive(char16_t) { return std::nullopt; }

std::optional<VolumeInfo> VolumeInfoOfMappedFolder(std::u16string_view root) {
  const std::string& bytes = HostBytesOf(root);
  const UniqueFd folder = EndOfPath(bytes).Open(O_PATH | O_DIRECTORY);
  struct stat status;
  struct statfs volume;
  if (!folder || fstat(folder.Get(), &status) != 0 || fstatfs(folder.Get(), &volume) != 0)
    return std::nullopt;
  return VolumeInfo{.fileSystem = NameOfFileSystem(static_cast<uint32_t>(volume.f_type)),
                    .label = {},
                    .serial = SerialOfFolder(IdentityOf(volume, status.st_dev), status.st_ino)};
}

std::u16string SystemPathOfRoot(std::u16string_view root) { return std::u16string(root); }

bool IsHostPathPrefix(std::u16string_view prefix, std::u16string_view path) {
  return path.starts_with(prefix);
}

}  // namespace quilmark
