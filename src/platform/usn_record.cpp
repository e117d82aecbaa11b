#include "platform/usn_record.h"

#include <algorithm>

#include "platform/bytes.h"
#include "platform/utf.h"

namespace quilmark {

namespace {

// USN_RECORD_V2: byte offsets from the start of a record.
constexpr size_t kMajorVersion = 4, kFrn = 8, kParentFrn = 16, kUsn = 24, kTimestamp = 32, kReason = 40,
                 kAttributes = 52, kNameLength = 56, kNameOffset = 58, kName = 60;
constexpr size_t kLeastRecord = 64;  // the fixed part, rounded up to the alignment of records
constexpr size_t kAlignment = 8;

}  // namespace

std::optional<UsnRecord> NextUsnRecord(UsnCursor& cursor) {
  if (cursor.offset >= cursor.block.size()) return std::nullopt;
  const auto rest = cursor.block.subspan(cursor.offset);

  cursor.malformed = true;  // until every length has been tested
  if (rest.size() < kLeastRecord) return std::nullopt;
  const size_t recordLength = LoadLe<uint32_t>(rest, 0);
  if (recordLength < kLeastRecord || recordLength > rest.size()) return std::nullopt;

  const auto record = rest.first(recordLength);
  const size_t nameLength = LoadLe<uint16_t>(record, kNameLength);
  const size_t nameOffset = LoadLe<uint16_t>(record, kNameOffset);
  if (!Fits(record.size(), nameOffset, nameLength)) return std::nullopt;

  cursor.malformed = false;
  cursor.offset += recordLength;
  return UsnRecord{.frn = FileReference(LoadLe<uint64_t>(record, kFrn)),
                   .parentFrn = FileReference(LoadLe<uint64_t>(record, kParentFrn)),
                   .usn = LoadLe<int64_t>(record, kUsn),
                   .reason = LoadLe<uint32_t>(record, kReason),
                   .attributes = LoadLe<uint32_t>(record, kAttributes),
                   .name = record.subspan(nameOffset, nameLength)};
}

std::u16string_view NameUnits(const UsnRecord& record, std::u16string& units) {
  LoadUnits(record.name, units);
  std::replace(units.begin(), units.end(), u'\\', kNameBackslash);
  return units;
}

size_t UsnRecordLength(size_t nameUnits) {
  const size_t length = kName + nameUnits * sizeof(char16_t);
  return std::max(kLeastRecord, (length + kAlignment - 1) / kAlignment * kAlignment);
}

void PutUsnRecord(std::span<std::byte> to, const UsnRecord& record, uint64_t timestamp) {
  const size_t length = UsnRecordLength(record.name.size() / sizeof(char16_t));
  std::fill_n(to.begin(), length, std::byte{0});
  StoreLe(to, 0, static_cast<uint32_t>(length));
  StoreLe(to, kMajorVersion, uint16_t{2});
  StoreLe(to, kFrn, record.frn.value);
  StoreLe(to, kParentFrn, record.parentFrn.value);
  StoreLe(to, kUsn, record.usn);
  StoreLe(to, kTimestamp, timestamp);
  StoreLe(to, kReason, record.reason);
  StoreLe(to, kAttributes, record.attributes);
  StoreLe(to, kNameLength, static_cast<uint16_t>(record.name.size()));
  StoreLe(to, kNameOffset, static_cast<uint16_t>(kName));
  std::copy(record.name.begin(), record.name.end(), to.begin() + kName);
}

}  // namespace quilmark
