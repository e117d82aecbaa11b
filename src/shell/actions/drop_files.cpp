#include "shell/actions/drop_files.h"

#include <cstdint>
#include <cstring>

namespace quilmark {

namespace {

// DROPFILES: where the list begins, a point, whether that lies outside of the client area, whether the
// list is in UTF-16.
struct Header {
  uint32_t listOffset = 0;
  int32_t x = 0, y = 0;
  uint32_t isOutsideClient = 0, isWide = 1;
};
static_assert(sizeof(Header) == 20);

bool CanBeListed(const std::u16string& path) { return !path.empty() && path.find(u'\0') == path.npos; }

}  // namespace

std::vector<std::byte> DropFilesBlock(const std::vector<std::u16string>& paths) {
  size_t units = 0;
  for (const std::u16string& path : paths) units += CanBeListed(path) ? path.size() + 1 : 0;
  if (units == 0) return {};
  std::vector<std::byte> block(sizeof(Header) + (units + 1) * sizeof(char16_t));
  const Header header{.listOffset = sizeof(Header)};
  std::memcpy(block.data(), &header, sizeof header);
  std::byte* to = block.data() + sizeof header;
  for (const std::u16string& path : paths) {
    if (!CanBeListed(path)) continue;
    const size_t bytes = (path.size() + 1) * sizeof(char16_t);
    std::memcpy(to, path.c_str(), bytes);
    to += bytes;
  }
  return block;
}

}  // namespace quilmark
