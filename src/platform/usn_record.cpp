#include "platform/usn_record.h"

#include <algorithm>

#include "platform/bytes.h"
#include "platform/utf.h"

namespace quilmark {

namespace {

// Where the fields of a record stand, by its major version (USN_RECORD_V2 and _V3 of winioctl.h).
struct Layout {
  size_t frn, parentFrn, usn, timestamp, reason, attributes, nameLength, nameOffset, name;
};
constexpr Layout kVersion2{8, 16, 24, 32, 40, 52, 56, 58, 60};
constexpr Layout kVersion3{8, 24, 40, 48, 56, 68, 72, 74, 76};

constexpr size_t kMajorVersion = 4;  // byte offset, in every version
constexpr size_t kLeastRecord = 64;  // the fixed part of version 2, rounded up to the alignment
constexpr size_t kLeastHeader = 32;  // length, version, and what every version has
constexpr size_t kAlignment = 8;

// The fields of one whole record. Empty if its name does not lie within it. REQUIRES bytes.size() >=
// at.name
std::optional<UsnRecord> TakeFields(std::span<const std::byte> bytes, const Layout& at) {
  // Names are whole units; damage may leave half of one.
  const size_t nameLength = LoadLe<uint16_t>(bytes, at.nameLength) & ~size_t{1};
  const size_t nameOffset = LoadLe<uint16_t>(bytes, at.nameOffset);
  if (!Fits(bytes.size(), nameOffset, nameLength)) return std::nullopt;
  return UsnRecord{.frn = FileReference(LoadLe<uint64_t>(bytes, at.frn)),
                   .parentFrn = FileReference(LoadLe<uint64_t>(bytes, at.parentFrn)),
                   .usn = LoadLe<int64_t>(bytes, at.usn),
                   .reason = LoadLe<uint32_t>(bytes, at.reason),
                   .attributes = LoadLe<uint32_t>(bytes, at.attributes),
                   .name = bytes.subspan(nameOffset, nameLength)};
}

// References of version 3 have 128 bits. REQUIRES bytes.size() >= kVersion3.name
bool HasLongReference(std::span<const std::byte> bytes) {
  return LoadLe<uint64_t>(bytes, kVersion3.frn + 8) != 0 ||
         LoadLe<uint64_t>(bytes, kVersion3.parentFrn + 8) != 0;
}

// One whole record of a page. REQUIRES bytes.size() >= kLeastHeader
std::optional<StoredUsnRecord> TakeStored(std::span<const std::byte> bytes) {
  const auto major = LoadLe<uint16_t>(bytes, kMajorVersion);
  if (major != 2 && major != 3) return std::nullopt;
  const Layout& at = major == 2 ? kVersion2 : kVersion3;
  if (bytes.size() < at.name || (major == 3 && HasLongReference(bytes))) return std::nullopt;
  const auto record = TakeFields(bytes, at);
  if (!record) return std::nullopt;
  return StoredUsnRecord{.record = *record, .timestamp = LoadLe<uint64_t>(bytes, at.timestamp)};
}

}  // namespace

std::optional<UsnRecord> NextUsnRecord(UsnCursor& cursor) {
  if (cursor.offset >= cursor.block.size()) return std::nullopt;
  const auto rest = cursor.block.subspan(cursor.offset);

  cursor.malformed = true;  // until every length has been tested
  if (rest.size() < kLeastRecord) return std::nullopt;
  const size_t recordLength = LoadLe<uint32_t>(rest, 0);
  if (recordLength < kLeastRecord || recordLength > rest.size()) return std::nullopt;
  const auto record = TakeFields(rest.first(recordLength), kVersion2);
  if (!record) return std::nullopt;
  cursor.malformed = false;
  cursor.offset += recordLength;
  return record;
}

std::optional<StoredUsnRecord> NextStoredUsnRecord(StoredUsnCursor& cursor) {
  while (Fits(cursor.page.size(), cursor.offset, kLeastHeader)) {
    const size_t start = cursor.offset;
    const size_t length = LoadLe<uint32_t>(cursor.page, start);
    // Zeros fill the rest of a page; anything else that is no length is damage.
    const bool isLength = length >= kLeastHeader && length % kAlignment == 0;
    if (!isLength || !Fits(cursor.page.size(), start, length)) return std::nullopt;
    cursor.offset += length;
    auto stored = TakeStored(cursor.page.subspan(start, length));
    if (!stored) continue;
    stored->offset = start;
    return stored;
  }
  return std::nullopt;
}

std::u16string_view NameUnits(const UsnRecord& record, std::u16string& units) {
  LoadUnits(record.name, units);
  std::replace(units.begin(), units.end(), u'\\', kNameBackslash);
  return units;
}

size_t UsnRecordLength(size_t nameUnits) {
  const size_t length = kVersion2.name + nameUnits * sizeof(char16_t);
  return std::max(kLeastRecord, (length + kAlignment - 1) / kAlignment * kAlignment);
}

void PutUsnRecord(std::span<std::byte> to, const UsnRecord& record, uint64_t timestamp) {
  const size_t length = UsnRecordLength(record.name.size() / sizeof(char16_t));
  std::fill_n(to.begin(), length, std::byte{0});
  StoreLe(to, 0, static_cast<uint32_t>(length));
  StoreLe(to, kMajorVersion, uint16_t{2});
  StoreLe(to, kVersion2.frn, record.frn.value);
  StoreLe(to, kVersion2.parentFrn, record.parentFrn.value);
  StoreLe(to, kVersion2.usn, record.usn);
  StoreLe(to, kVersion2.timestamp, timestamp);
  StoreLe(to, kVersion2.reason, record.reason);
  StoreLe(to, kVersion2.attributes, record.attributes);
  StoreLe(to, kVersion2.nameLength, static_cast<uint16_t>(record.name.size()));
  StoreLe(to, kVersion2.nameOffset, static_cast<uint16_t>(kVersion2.name));
  std::copy(record.name.begin(), record.name.end(), to.begin() + kVersion2.name);
}

}  // namespace quilmark
