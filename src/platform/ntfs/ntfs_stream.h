// Contents of an attribute by byte offset, wherever its clusters lie.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/byte_source.h"
#include "platform/ntfs/boot_sector.h"
#include "platform/ntfs/mft_record.h"
#include "platform/ntfs/places.h"

namespace quilmark {

// A stretch that is on the volume; what lies between extents reads as zeros.
struct NtfsExtent {
  StreamOffset start;
  uint64_t length = 0;  // bytes
  ByteOffset place;     // on the volume

  // Behind its last byte.
  StreamOffset End() const { return start + length; }
};

static_assert(sizeof(NtfsExtent) == 24);  // a fragmented file has a million

// A stream, ready to be read.
struct NtfsStream {
  uint64_t size = 0;                // bytes
  uint64_t initialized = 0;         // bytes; what lies behind them was never written and reads as zeros
  std::vector<NtfsExtent> extents;  // ascending, not overlapping
  std::vector<std::byte> resident;  // the contents where they are in the record itself
};

// Appends the runs of `attribute` behind what is there. False, with what was read so far, at runs that
// are malformed, lie outside the volume or do not follow on the extents before.
[[nodiscard]] bool AppendRuns(NtfsStream& stream, const NtfsAttribute& attribute,
                              const NtfsGeometry& geometry);

// `offset`, or the first byte behind it that was written and is no part of a hole; the end of the stream
// if none is.
StreamOffset NextStored(const NtfsStream& stream, StreamOffset offset);

// Fills `buffer` from byte `offset` of the stream. Returns how many bytes are good: fewer at the end of
// the stream and where the volume cannot be read.
[[nodiscard]] size_t ReadStream(ByteSource& source, const NtfsStream& stream, StreamOffset offset,
                                std::span<std::byte> buffer);

}  // namespace quilmark
