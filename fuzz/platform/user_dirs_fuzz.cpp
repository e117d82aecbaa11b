// Any bytes: a folder that is named is absolute, is not the home folder, and is no longer than the bytes
// and the home folder together.
#include <cstdint>
#include <cstdlib>

#include "platform/posix/user_dirs.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quilmark;
  constexpr std::string_view kHome = "/home/me";
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto folder = FindUserDir(text, "XDG_DESKTOP_DIR", kHome);
  if (!folder) return 0;
  if (!folder->starts_with('/') || *folder == kHome) std::abort();
  if (folder->size() > size + kHome.size()) std::abort();
  // What a line names is not changed by lines without the key in front and behind.
  const std::string framed = "# first\n" + std::string(text) + "\nXDG_MUSIC_DIR=\"/music\"\n";
  if (FindUserDir(framed, "XDG_DESKTOP_DIR", kHome) != folder) std::abort();
  return 0;
}
