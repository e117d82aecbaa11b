#include "platform/ntfs/image_info.h"

#include <algorithm>
#include <array>

#include "platform/byte_source.h"
#include "platform/bytes.h"
#include "platform/ntfs/boot_sector.h"
#include "platform/ntfs/mft_reader.h"

namespace quilmark {

namespace {

constexpr RecordNumber kVolumeRecord{3};
constexpr uint32_t kVolumeName = 0x60;      // attribute type
constexpr size_t kMostLabelBytes = 2 * 32;  // Windows takes labels of at most 32 units

// The low half is what Windows shows as the serial of the volume.
constexpr uint32_t ShownSerial(uint64_t serial) { return static_cast<uint32_t>(serial); }

std::u16string ReadLabel(MftReader& reader) {
  const auto label = FindStream(reader, kVolumeRecord, kVolumeName, {});
  if (!label || label->resident.empty()) return {};
  std::u16string units;
  LoadUnits(std::span(label->resident).first(std::min(label->resident.size(), kMostLabelBytes)), units);
  return units;
}

}  // namespace

std::optional<VolumeInfo> VolumeInfoOfImage(std::u16string_view path) {
  auto reader = OpenMft(OpenByteSource(path));
  if (!reader) return std::nullopt;
  return VolumeInfo{.fileSystem = std::u16string(kNtfs),
                    .label = ReadLabel(*reader),
                    .serial = ShownSerial(reader->geometry.serial)};
}

uint64_t MissingBytesOfImage(std::u16string_view path) {
  const auto source = OpenByteSource(path);
  std::array<std::byte, kBootSectorBytes> sector;
  if (source == nullptr || source->ReadAt(ByteOffset(0), sector) < sector.size()) return 0;
  const auto geometry = ParseBootSector(sector);
  if (!geometry) return 0;
  const uint64_t bytes = geometry->sectors * geometry->sectorBytes;
  return bytes - std::min(bytes, source->Size());
}

}  // namespace quilmark
