// The wrapped calls of a POSIX host; --wrap makes __real_x of the system's x.
#ifndef _WIN32

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>

#include "support/system_faults.h"

using quilmark::SystemFaultSwitch;
using Verdict = SystemFaultSwitch::Verdict;

// Calls that fail whole.
#define QUILMARK_WRAP(type, name, parameters, arguments, code)                           \
  extern "C" type __real_##name parameters;                                              \
  extern "C" type __wrap_##name parameters {                                             \
    if (SystemFaultSwitch::Ask(#name) == Verdict::kPass) return __real_##name arguments; \
    errno = code;                                                                        \
    return static_cast<type>(-1);                                                        \
  }

QUILMARK_WRAP(int, fstat, (int fd, struct stat* status), (fd, status), EIO)
QUILMARK_WRAP(int, fstatat, (int folder, const char* name, struct stat* status, int flags),
              (folder, name, status, flags), EIO)
QUILMARK_WRAP(int, fstatfs, (int fd, struct statfs* volume), (fd, volume), EIO)
QUILMARK_WRAP(int, statx, (int folder, const char* name, int flags, unsigned mask, struct statx* facts),
              (folder, name, flags, mask, facts), EIO)
QUILMARK_WRAP(int, ftruncate, (int fd, off_t length), (fd, length), EIO)
QUILMARK_WRAP(int, fsync, (int fd), (fd), EIO)
QUILMARK_WRAP(int, mkdirat, (int folder, const char* name, mode_t mode), (folder, name, mode), ENOSPC)
QUILMARK_WRAP(int, unlinkat, (int folder, const char* name, int flags), (folder, name, flags), EACCES)
QUILMARK_WRAP(off_t, lseek, (int fd, off_t offset, int whence), (fd, offset, whence), EIO)

// Calls that may move a part of their bytes.
#define QUILMARK_WRAP_BYTES(name, parameters, whole, half, moves, code)                     \
  extern "C" ssize_t __real_##name parameters;                                              \
  extern "C" ssize_t __wrap_##name parameters {                                             \
    const Verdict verdict = SystemFaultSwitch::Ask(#name, SystemFaultSwitch::Moves::moves); \
    if (verdict == Verdict::kPass) return __real_##name whole;                              \
    if (verdict == Verdict::kHalf && size > 1) return __real_##name half;                   \
    errno = code;                                                                           \
    return -1;                                                                              \
  }

QUILMARK_WRAP_BYTES(read, (int fd, void* to, size_t size), (fd, to, size), (fd, to, size / 2), kNothing,
                    EIO)
QUILMARK_WRAP_BYTES(pread, (int fd, void* to, size_t size, off_t offset), (fd, to, size, offset),
                    (fd, to, size / 2, offset), kNothing, EIO)
QUILMARK_WRAP_BYTES(write, (int fd, const void* from, size_t size), (fd, from, size),
                    (fd, from, size / 2), kWrites, ENOSPC)
QUILMARK_WRAP_BYTES(pwrite, (int fd, const void* from, size_t size, off_t offset),
                    (fd, from, size, offset), (fd, from, size / 2, offset), kWrites, ENOSPC)

#undef QUILMARK_WRAP
#undef QUILMARK_WRAP_BYTES

extern "C" char* __real_getcwd(char* to, size_t size);
extern "C" char* __wrap_getcwd(char* to, size_t size) {
  if (SystemFaultSwitch::Ask("getcwd") == Verdict::kPass) return __real_getcwd(to, size);
  errno = EACCES;
  return nullptr;
}

extern "C" int __real_openat(int folder, const char* name, int flags, ...);
extern "C" int __wrap_openat(int folder, const char* name, int flags, ...) {
  va_list more;
  va_start(more, flags);
  const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
  va_end(more);
  if (SystemFaultSwitch::Ask("openat") != Verdict::kPass) {
    errno = EACCES;
    return -1;
  }
  const int fd = __real_openat(folder, name, flags, mode);
  if (fd >= 0) SystemFaultSwitch::Opened(fd);
  return fd;
}

// Listing a folder.
extern "C" long __real_syscall(long number, ...);
extern "C" long __wrap_syscall(long number, ...) {
  va_list more;
  va_start(more, number);
  const long fd = va_arg(more, long);
  void* const to = va_arg(more, void*);
  const size_t size = va_arg(more, size_t);
  va_end(more);
  if (number != SYS_getdents64) return __real_syscall(number, fd, to, size);
  const Verdict verdict = SystemFaultSwitch::Ask("getdents64");
  if (verdict == Verdict::kFail || (verdict == Verdict::kHalf && size < 2048)) {
    errno = EIO;
    return -1;
  }
  return __real_syscall(number, fd, to, verdict == Verdict::kHalf ? size / 2 : size);
}

// What the linker is told to look for: a library's object is taken for a name that is missing already.
extern "C" const int quilmark_wrapped_calls;
extern "C" const int quilmark_wrapped_calls = 1;

extern "C" int __real_close(int fd);
extern "C" int __wrap_close(int fd) {
  SystemFaultSwitch::Closed(fd);
  return __real_close(fd);
}

#endif
