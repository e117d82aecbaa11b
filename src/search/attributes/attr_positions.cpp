#include "search/attributes/attr_positions.h"

#include <string_view>

#include "config/config_directory.h"
#include "platform/bytes.h"
#include "platform/files.h"

namespace quilmark {

namespace {

constexpr std::string_view kMagic = "QMAP";
constexpr uint32_t kVersion = 1, kMostPositions = 1'000;
constexpr size_t kHeader = 12, kPosition = 18;
constexpr size_t kLetter = 0, kJournalId = 2, kUsn = 10;

std::u16string FilePath() { return ConfigPath(u"attrpositions.v1.bin"); }

}  // namespace

std::string AttrPositionBytes(std::span<const AttrPosition> positions) {
  std::string text(kHeader + positions.size() * kPosition, '\0');
  kMagic.copy(text.data(), kMagic.size());
  const auto bytes = std::as_writable_bytes(std::span(text));
  StoreLe(bytes, 4, kVersion);
  StoreLe(bytes, 8, static_cast<uint32_t>(positions.size()));
  for (size_t i = 0; i < positions.size(); ++i) {
    const auto place = bytes.subspan(kHeader + i * kPosition, kPosition);
    StoreLe(place, kLetter, static_cast<uint16_t>(positions[i].letter));
    StoreLe(place, kJournalId, positions[i].journalId);
    StoreLe(place, kUsn, positions[i].usn);
  }
  return text;
}

std::optional<std::vector<AttrPosition>> ReadAttrPositionBytes(std::span<const std::byte> bytes) {
  if (bytes.size() < kHeader) return std::nullopt;
  const std::string_view magic(reinterpret_cast<const char*>(bytes.data()), kMagic.size());
  if (magic != kMagic || LoadLe<uint32_t>(bytes, 4) != kVersion) return std::nullopt;
  const size_t count = LoadLe<uint32_t>(bytes, 8);
  if (count > kMostPositions || bytes.size() - kHeader != count * kPosition) return std::nullopt;
  std::vector<AttrPosition> positions;
  for (size_t i = 0; i < count; ++i) {
    const auto place = bytes.subspan(kHeader + i * kPosition, kPosition);
    positions.push_back({.letter = static_cast<char16_t>(LoadLe<uint16_t>(place, kLetter)),
                         .journalId = LoadLe<uint64_t>(place, kJournalId),
                         .usn = LoadLe<int64_t>(place, kUsn)});
  }
  return positions;
}

std::optional<std::vector<AttrPosition>> LoadAttrPositions() {
  const auto bytes = ReadFileBytes(FilePath(), kHeader + kMostPositions * kPosition);
  if (!bytes && IsMissingPath(FilePath())) return std::nullopt;
  if (!bytes) return std::vector<AttrPosition>();
  return ReadAttrPositionBytes(std::as_bytes(std::span(*bytes))).value_or(std::vector<AttrPosition>());
}

void SaveAttrPositions(std::span<const AttrPosition> positions) {
  WriteMarkedFileBytes(FilePath(), AttrPositionBytes(positions), kHeader);
}

}  // namespace quilmark
