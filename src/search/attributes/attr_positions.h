// attrpositions.v1.bin: up to where in each journal the attribute cache beside it is right. See
// docs/formats.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quilmark {

struct AttrPosition {
  char16_t letter = 0;
  uint64_t journalId = 0;
  int64_t usn = 0;

  bool operator==(const AttrPosition&) const = default;
};

// The bytes of a file. A reader refuses one with more than a thousand positions.
std::string AttrPositionBytes(std::span<const AttrPosition> positions);

// Empty for a file of another kind or version, and for one that is not whole.
[[nodiscard]] std::optional<std::vector<AttrPosition>> ReadAttrPositionBytes(
    std::span<const std::byte> bytes);

// From the file in the configuration directory. Empty where it is missing; without a position
// where it is foreign or cannot be read.
[[nodiscard]] std::optional<std::vector<AttrPosition>> LoadAttrPositions();

// Writes them to that file. A failed save is ignored: it leaves older positions, which cost a longer
// look, or none, and then all entries count as stale.
void SaveAttrPositions(std::span<const AttrPosition> positions);

}  // namespace quilmark
