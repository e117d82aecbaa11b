#include "platform/ntfs/data_runs.h"

#include "platform/bytes.h"

namespace quilmark {

namespace {

// A number of 1 to 8 bytes, sign-extended.
int64_t LoadSigned(std::span<const std::byte> bytes) {
  uint64_t value = 0;
  for (size_t i = 0; i < bytes.size(); ++i) value |= std::to_integer<uint64_t>(bytes[i]) << (8 * i);
  const size_t unused = 64 - 8 * bytes.size();
  return static_cast<int64_t>(value << unused) >> unused;
}

}  // namespace

std::optional<DataRun> NextRun(RunCursor& cursor) {
  if (cursor.offset >= cursor.runs.size()) return std::nullopt;
  const auto sizes = std::to_integer<unsigned>(cursor.runs[cursor.offset]);
  if (sizes == 0) return std::nullopt;
  const size_t lengthBytes = sizes & 0xF, offsetBytes = sizes >> 4;

  cursor.malformed = true;
  if (lengthBytes == 0 || lengthBytes > 8 || offsetBytes > 8) return std::nullopt;
  if (!Fits(cursor.runs.size(), cursor.offset + 1, lengthBytes + offsetBytes)) return std::nullopt;
  const int64_t length = LoadSigned(cursor.runs.subspan(cursor.offset + 1, lengthBytes));
  if (length <= 0) return std::nullopt;
  DataRun run{.cluster = {}, .clusters = ClusterCount(static_cast<uint64_t>(length))};
  if (offsetBytes != 0) {
    const int64_t step = LoadSigned(cursor.runs.subspan(cursor.offset + 1 + lengthBytes, offsetBytes));
    cursor.cluster.value += static_cast<uint64_t>(step);
    if (static_cast<int64_t>(cursor.cluster.value) < 0) return std::nullopt;
    run.cluster = cursor.cluster;
  }
  cursor.malformed = false;
  cursor.offset += 1 + lengthBytes + offsetBytes;
  return run;
}

}  // namespace quilmark
