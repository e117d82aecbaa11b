// Paths of files.h as the bytes that a POSIX call takes, whatever their length.
#pragma once

#include <fcntl.h>

#include <string>
#include <string_view>

#include "platform/posix/unique_fd.h"

namespace quilmark {

// Bytes of `path` with its drive resolved. Empty for a drive that is not mapped, a relative path, and a
// path that holds a NUL. The string belongs to the calling thread; the next call overwrites it.
const std::string& HostBytesOf(std::u16string_view path);

// An absolute path of the host as a path of files.h: "." and "..", repeated and trailing slashes taken
// out.
std::u16string PathOfHostBytes(std::string_view absolute);

// A path split for the "at" calls: `name` seen from `folder`.
struct PathEnd {
  UniqueFd owner;
  int folder = AT_FDCWD;
  const char* name =
      "";  // into the bytes that were given; "" (which no call opens) if a folder is missing

  // Opens `name` from `folder`; the owner is empty with errno set on failure.
  [[nodiscard]] UniqueFd Open(int flags) const;
};

// Steps through the folders in front until the rest is short enough for one call: PATH_MAX limits a
// call, not a path. `bytes` must outlive the result.
[[nodiscard]] PathEnd EndOfPath(const std::string& bytes);

}  // namespace quilmark
