#include "platform/ntfs/ntfs_stream.h"

#include <algorithm>
#include <cstring>

#include "platform/ntfs/data_runs.h"

namespace quilmark {

bool AppendRuns(NtfsStream& stream, const NtfsAttribute& attribute, const NtfsGeometry& geometry) {
  const uint64_t clusterBytes = geometry.clusterBytes;
  // Cluster numbers of 2^63 / clusterBytes and more have no byte offset.
  const uint64_t mostClusters = (uint64_t{1} << 62) / clusterBytes;
  uint64_t vcn = attribute.lowestVcn;
  if (vcn >= mostClusters) return false;
  if (!stream.extents.empty()) {
    const NtfsExtent& last = stream.extents.back();
    if (vcn * clusterBytes < last.start + last.length) return false;
  }
  RunCursor cursor{.runs = attribute.runs};
  while (const auto run = NextRun(cursor)) {
    if (run->clusters > mostClusters - vcn) return false;
    if (run->cluster) {
      if (*run->cluster >= geometry.Clusters() || run->clusters > geometry.Clusters() - *run->cluster) {
        return false;
      }
      stream.extents.push_back({.start = vcn * clusterBytes,
                                .length = run->clusters * clusterBytes,
                                .place = *run->cluster * clusterBytes});
    }
    vcn += run->clusters;
  }
  return !cursor.malformed;
}

// The first extent that ends behind `offset`.
static auto ExtentAt(const NtfsStream& stream, uint64_t offset) {
  return std::upper_bound(
      stream.extents.begin(), stream.extents.end(), offset,
      [](uint64_t at, const NtfsExtent& extent) { return at < extent.start + extent.length; });
}

uint64_t NextStored(const NtfsStream& stream, uint64_t offset) {
  if (!stream.resident.empty()) return std::min(offset, stream.size);
  const auto extent = ExtentAt(stream, offset);
  if (extent == stream.extents.end()) return stream.size;
  const uint64_t stored = std::max(offset, extent->start);
  return stored < stream.initialized ? std::min(stored, stream.size) : stream.size;
}

static size_t CopyResident(const NtfsStream& stream, uint64_t offset, std::span<std::byte> buffer) {
  if (offset >= stream.resident.size()) return 0;
  const size_t count = std::min<size_t>(buffer.size(), stream.resident.size() - offset);
  std::memcpy(buffer.data(), stream.resident.data() + offset, count);
  return count;
}

// What was written; `buffer` ends within it.
static size_t ReadWritten(ByteSource& source, const NtfsStream& stream, uint64_t offset,
                          std::span<std::byte> buffer) {
  auto extent = ExtentAt(stream, offset);
  size_t done = 0;
  while (done < buffer.size()) {
    const uint64_t at = offset + done;
    const size_t left = buffer.size() - done;
    if (extent == stream.extents.end() || at < extent->start) {
      const uint64_t hole = extent == stream.extents.end() ? left : extent->start - at;
      const auto count = static_cast<size_t>(std::min<uint64_t>(hole, left));
      std::memset(buffer.data() + done, 0, count);
      done += count;
      continue;
    }
    const uint64_t inside = at - extent->start;
    const auto count = static_cast<size_t>(std::min<uint64_t>(extent->length - inside, left));
    const size_t got = source.ReadAt(extent->place + inside, buffer.subspan(done, count));
    done += got;
    if (got < count) return done;
    ++extent;
  }
  return done;
}

size_t ReadStream(ByteSource& source, const NtfsStream& stream, uint64_t offset,
                  std::span<std::byte> buffer) {
  if (!stream.resident.empty()) return CopyResident(stream, offset, buffer);
  if (offset >= stream.size) return 0;
  const auto wanted = static_cast<size_t>(std::min<uint64_t>(buffer.size(), stream.size - offset));
  const uint64_t written = stream.initialized > offset ? stream.initialized - offset : 0;
  const auto count = static_cast<size_t>(std::min<uint64_t>(wanted, written));
  if (count != 0) {
    const size_t got = ReadWritten(source, stream, offset, buffer.first(count));
    if (got < count) return got;
  }
  std::fill_n(buffer.begin() + static_cast<ptrdiff_t>(count), wanted - count, std::byte{0});
  return wanted;
}

}  // namespace quilmark
