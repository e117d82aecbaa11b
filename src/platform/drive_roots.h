// The map of drive letters from inside: what the files of a system ask of it, and what it asks of the
// system.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/drives.h"

namespace quilmark {

// "X:" alone or followed by a separator. "\:" is the host's own: a file whose name is a colon.
inline bool IsDrivePath(std::u16string_view path) {
  return path.size() >= 2 && path[0] != u'\\' && path[1] == u':' &&
         (path.size() == 2 || path[2] == u'\\');
}

// The root of a mapped letter, shared instead of copied; null without a mapping. Any thread.
[[nodiscard]] std::shared_ptr<const std::u16string> SharedRootOf(char16_t letter);

// Bit 0 for A: to bit 25 for Z:, without regard to mappings. 0 on a POSIX host.
uint32_t SystemDriveMask();

// Those of them whose root answers. 0 on a POSIX host.
uint32_t AnsweringSystemDriveMask();

// Whether the system knows a root of its own drive `letter`. False on a POSIX host.
bool HasSystemDriveRoot(char16_t letter);

// Of the system's own drive `letter`; empty when there is none or its medium cannot be read.
[[nodiscard]] std::optional<VolumeInfo> VolumeInfoOfSystemDrive(char16_t letter);

// Of a folder that a letter is mapped to; empty if it is no folder.
[[nodiscard]] std::optional<VolumeInfo> VolumeInfoOfMappedFolder(std::u16string_view root);

// The root of a mapping as a path of files.h that no mapping changes: a root is a path of the system,
// also where its own letter is mapped.
std::u16string SystemPathOfRoot(std::u16string_view root);

// True if `prefix` and the beginning of `path` are the same units to the host's file names. REQUIRES
// prefix.size() <= path.size().
bool IsHostPathPrefix(std::u16string_view prefix, std::u16string_view path);

// One serial for a folder of a volume: a letter that is given to another folder is another drive, even
// on the same volume.
uint32_t SerialOfFolder(uint64_t volume, uint64_t folder);

}  // namespace quilmark
