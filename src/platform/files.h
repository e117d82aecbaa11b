// Files and folders by path.
//
// Paths are Windows paths: "C:\dir\name". On a POSIX host "X:" is a mapped drive (drives.h), and a path
// that begins with a backslash is the host's own: "\usr\lib" is /usr/lib. Names follow the host pair of
// utf.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quilmark {

// One name of a listing. Kept small, as a listing has one for each name of its folder.
struct FolderEntry {
  uint32_t nameOffset = 0;  // into FolderListing::names
  uint16_t nameLength = 0;  // UTF-16 units
  bool isDirectory = false;
  bool isLink = false;  // a directory that stands for one elsewhere: a junction or a link of Windows
};
static_assert(sizeof(FolderEntry) == 8);

// Names of one folder in the order in which the system gives them, without "." and "..". Reused from
// folder to folder: clearing keeps the memory.
struct FolderListing {
  std::u16string names;
  std::vector<FolderEntry> entries;

  // Of an entry of this listing; good until the listing changes.
  std::u16string_view NameOf(const FolderEntry& entry) const {
    return std::u16string_view(names).substr(entry.nameOffset, entry.nameLength);
  }

  // Keeps the memory.
  void Clear() {
    names.clear();
    entries.clear();
  }
};

// Replaces `listing` by the contents of the folder. False, with what was read so far, if the folder
// cannot be opened. A link to a folder is an entry that is no directory on a POSIX host; a junction or a
// link of Windows is a directory.
[[nodiscard]] bool ListFolder(std::u16string_view path, FolderListing& listing);

// Whether a file or folder has that name, or a link whose target is gone. False as well where the system
// does not say.
bool IsExistingPath(std::u16string_view path);

// True only where the system says that nothing has that name, or that there is no such folder for it:
// what cannot be asked for is not missing.
bool IsMissingPath(std::u16string_view path);

// Whether that is a folder, or a link that leads to one. False as well where the system does not say.
bool IsExistingFolder(std::u16string_view path);

// Makes one folder, and none of those above it. True if it stands afterwards. The result may be dropped
// by whoever goes on to make something in it, which then fails.
bool MakeFolder(std::u16string_view path);

// The whole file; empty if it cannot be opened or read, or is longer than `limit`.
[[nodiscard]] std::optional<std::string> ReadFileBytes(std::u16string_view path,
                                                       uint64_t limit = 64u << 20);

// Whether a write waits until the disk has it, or leaves that to the system: then it outlives this
// program, but not a system that ends at once.
enum class Flushing { kWaited, kLeftToSystem };

// Rewrites the file on its own name, or makes it: over what stands there, then cut to length, then
// flushed to the disk. Where that ends early the file holds parts of both, each at its place, and is
// never empty if it was not before; a disk that is full leaves it as it was. False on any failure.
[[nodiscard]] bool WriteFileBytes(std::u16string_view path, std::string_view bytes,
                                  Flushing flushing = Flushing::kWaited);

// The same for bytes that are worth nothing in part: the first `markBytes` of the file, which must not
// be longer than `bytes`, are zeros until all the others are on the disk. The result may be dropped for
// what can be made anew.
bool WriteMarkedFileBytes(std::u16string_view path, std::string_view bytes, size_t markBytes);

// Appends in one write, behind `firstBytes` if the file is new or empty. False on any failure. The
// result may be dropped for a line of a log.
bool AppendFileBytes(std::u16string_view path, std::string_view bytes, std::string_view firstBytes);

// Removes a file, but no folder. False if it was not there or could not be removed; the result may be
// dropped where what is left does no harm.
bool RemoveFile(std::u16string_view path);

// Gives a file or folder another name, in its folder or in another of the same volume; where the new
// name is taken both stay as they are. 0, or why not, as Windows numbers its errors.
[[nodiscard]] uint32_t RenamePath(std::u16string_view from, std::u16string_view to);

// `path` as this host writes it in UTF-8 or in its own bytes: drives resolved, "/" on POSIX. For
// printing.
std::string HostPathBytes(std::u16string_view path);

// A path as the host's user types it, made absolute against the current folder, as a path of this
// header. Lexical on "." and ".."; the file need not exist.
std::u16string PathFromHost(std::string_view typed);

}  // namespace quilmark
