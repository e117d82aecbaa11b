#include "platform/file_facts.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>

#include "platform/posix/host_path.h"

namespace quilmark {

static FileTime TimeOf(const struct statx_timestamp& time) {
  return FileTimeOfUnix(time.tv_sec, time.tv_nsec);
}

std::optional<FileFacts> ReadFileFacts(std::u16string_view path) {
  const PathEnd end = EndOfPath(HostBytesOf(path));
  struct statx facts = {};
  constexpr unsigned kWanted = STATX_TYPE | STATX_SIZE | STATX_MTIME | STATX_CTIME | STATX_BTIME;
  if (statx(end.folder, end.name, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, kWanted, &facts) != 0) {
    return std::nullopt;
  }
  const FileTime modified = TimeOf(facts.stx_mtime);
  // Some file systems say that they know the birth, and then give the first second of 1970.
  const bool hasBirth = (facts.stx_mask & STATX_BTIME) != 0 &&
                        (facts.stx_btime.tv_sec != 0 || facts.stx_btime.tv_nsec != 0);
  const bool isDirectory = S_ISDIR(facts.stx_mode);
  return FileFacts{
      .size = isDirectory ? 0 : facts.stx_size,
      .modified = modified,
      .created = hasBirth ? TimeOf(facts.stx_btime) : std::min(modified, TimeOf(facts.stx_ctime)),
      .isDirectory = isDirectory};
}

}  // namespace quilmark
