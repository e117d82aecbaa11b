// Drive letters: what the system has, or what this process was given by hand.
//
// A process that maps a letter to a folder, or to the image of an NTFS volume, sees its mapped letters
// only, on every platform; without a mapping Windows shows its own drives and a POSIX host none.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quilmark {

// Gives `letter` (A to Z, either case) to `root`, a path of the host (see files.h). Replaces
// an earlier mapping. False for another character, and for no other reason: who maps a letter that is
// written in the code may drop the result. Any thread.
bool MapDrive(char16_t letter, std::u16string_view root);

// Takes a mapping back; nothing happens where there is none. Any thread.
void UnmapDrive(char16_t letter);

// The folder of a mapped letter; empty without a mapping.
[[nodiscard]] std::optional<std::u16string> MappedRoot(char16_t letter);

// `path` with the root of a mapped drive in the place of its "X:"; any other path as it is.
std::u16string ResolveMappedPath(std::u16string_view path);

// The reverse: a path of the host below a mapped root as "X:\..."; the deepest root wins. Empty if below
// none.
[[nodiscard]] std::optional<std::u16string> MappedPathOf(std::u16string_view hostPath);

// The letters that there are: bit 0 for A: to bit 25 for Z:.
uint32_t LogicalDriveMask();

// The letters of which the root answers: of LogicalDriveMask those with a medium, and what a host shows
// without listing it.
uint32_t AnsweringDriveMask();

// True unless the system knows no root for the letter, as before a medium is mounted.
bool HasDriveRoot(char16_t letter);

// What a volume says of itself.
struct VolumeInfo {
  std::u16string fileSystem;  // "NTFS", "FAT32", "ext4", ...
  std::u16string label;       // empty: none
  uint32_t serial = 0;        // as the system tells it, or of a folder's identity; copies share it
};

// The file system whose volumes are read by their records.
inline constexpr std::u16string_view kNtfs = u"NTFS";

// An NTFS volume that is walked: another machine's, or a folder's that stands under a letter; one that
// can have no journal.
inline constexpr std::u16string_view kNtfsElsewhere = u"NTFS (remote)";
inline constexpr std::u16string_view kNtfsWithoutJournal = u"NTFS (no journal)";

// What a letter stands for.
struct DriveTarget {
  bool isRemote = false;
  std::u16string_view device;  // "\Device\HarddiskVolume3"; "\??\C:\folder" of a substitute
};

// The file system by whose name a volume is to be read: `reported`, or kNtfsElsewhere, whose letter does
// not lead to a device with its records.
std::u16string_view FileSystemToRead(std::u16string_view reported, const DriveTarget& target);

// Of the drive `letter`; empty when there is no such drive or its medium cannot be read. A mapped folder
// on Windows is "folder": it has no journal of its own, whatever volume it lies on.
[[nodiscard]] std::optional<VolumeInfo> ReadVolumeInfo(char16_t letter);

}  // namespace quilmark
