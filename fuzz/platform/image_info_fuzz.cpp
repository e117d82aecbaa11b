// Any bytes as a file that is taken for an NTFS image: only one with a boot sector is, its serial is
// that of the sector, and its label is no longer than a label may be.
#include <sys/mman.h>
#include <unistd.h>

#include "platform/bytes.h"
#include "platform/ntfs/boot_sector.h"
#include "platform/ntfs/image_info.h"
#include "platform/utf.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

// A file in memory that has a path.
class MemoryFile {
 public:
  MemoryFile() : file_(memfd_create("image", 0)) { Require(file_ >= 0); }
  void SetContents(std::span<const std::byte> bytes) const {
    Require(ftruncate(file_, 0) == 0);
    Require(pwrite(file_, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()));
  }
  std::u16string Path() const { return FromUtf8("\\proc\\self\\fd\\" + std::to_string(file_)); }

 private:
  int file_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const MemoryFile file;
  const auto bytes = std::as_bytes(std::span(data, size));
  file.SetContents(bytes);
  const auto info = VolumeInfoOfImage(file.Path());
  if (!info) return 0;
  const auto geometry = ParseBootSector(bytes);
  Require(geometry && info->fileSystem == kNtfs);
  Require(info->serial == LoadLe<uint32_t>(bytes, 72));
  Require(info->label.size() <= 32 && info->label.size() * sizeof(char16_t) <= size);
  return 0;
}
