#include "platform/ntfs/ntfs_stream.h"

#include <algorithm>
#include <cstring>

#include "platform/ntfs/data_runs.h"

namespace quilmark {

static bool LiesOnVolume(ClusterNumber first, ClusterCount count, const NtfsGeometry& geometry) {
  const uint64_t clusters = geometry.Clusters().value;
  return first.value < clusters && count.value <= clusters - first.value;
}

// The run as an extent at `start`. Empty where a place of it has no offset or lies outside the volume.
static std::optional<NtfsExtent> ExtentOf(const DataRun& run, StreamOffset start,
                                          const NtfsGeometry& geometry) {
  if (!LiesOnVolume(*run.cluster, run.clusters, geometry)) return std::nullopt;
  const auto length = BytesOf(run.clusters, geometry.clusterBytes);
  const auto place = OffsetOf(*run.cluster, geometry.clusterBytes);
  if (!length || !place) return std::nullopt;
  return NtfsExtent{.start = start, .length = *length, .place = *place};
}

bool AppendRuns(NtfsStream& stream, const NtfsAttribute& attribute, const NtfsGeometry& geometry) {
  StreamCluster next = attribute.lowestVcn;
  auto start = OffsetOf(next, geometry.clusterBytes);
  if (!start || (!stream.extents.empty() && *start < stream.extents.back().End())) return false;
  RunCursor cursor{.runs = attribute.runs};
  while (const auto run = NextRun(cursor)) {
    const auto behind = ClusterBehind(next, run->clusters);
    const auto end = behind ? OffsetOf(*behind, geometry.clusterBytes) : std::nullopt;
    if (!end) return false;
    if (run->cluster) {
      const auto extent = ExtentOf(*run, *start, geometry);
      if (!extent) return false;
      stream.extents.push_back(*extent);
    }
    next = *behind;
    start = end;
  }
  return !cursor.malformed;
}

// The first extent that ends behind `offset`.
static auto ExtentAt(const NtfsStream& stream, StreamOffset offset) {
  return std::upper_bound(stream.extents.begin(), stream.extents.end(), offset,
                          [](StreamOffset at, const NtfsExtent& extent) { return at < extent.End(); });
}

StreamOffset NextStored(const NtfsStream& stream, StreamOffset offset) {
  const StreamOffset end(stream.size);
  if (!stream.resident.empty()) return std::min(offset, end);
  const auto extent = ExtentAt(stream, offset);
  if (extent == stream.extents.end()) return end;
  const StreamOffset stored = std::max(offset, extent->start);
  return stored.value < stream.initialized ? std::min(stored, end) : end;
}

static size_t CopyResident(const NtfsStream& stream, StreamOffset offset, std::span<std::byte> buffer) {
  if (offset.value >= stream.resident.size()) return 0;
  const size_t count = std::min<size_t>(buffer.size(), stream.resident.size() - offset.value);
  std::memcpy(buffer.data(), stream.resident.data() + offset.value, count);
  return count;
}

// What was written; `buffer` ends within it.
static size_t ReadWritten(ByteSource& source, const NtfsStream& stream, StreamOffset offset,
                          std::span<std::byte> buffer) {
  auto extent = ExtentAt(stream, offset);
  size_t done = 0;
  while (done < buffer.size()) {
    const StreamOffset at = offset + done;
    const size_t left = buffer.size() - done;
    if (extent == stream.extents.end() || at < extent->start) {
      const uint64_t hole = extent == stream.extents.end() ? left : BytesBetween(at, extent->start);
      const auto count = static_cast<size_t>(std::min<uint64_t>(hole, left));
      std::memset(buffer.data() + done, 0, count);
      done += count;
      continue;
    }
    const uint64_t inside = BytesBetween(extent->start, at);
    const auto count = static_cast<size_t>(std::min<uint64_t>(extent->length - inside, left));
    const size_t got = source.ReadAt(extent->place + inside, buffer.subspan(done, count));
    done += got;
    if (got < count) return done;
    ++extent;
  }
  return done;
}

size_t ReadStream(ByteSource& source, const NtfsStream& stream, StreamOffset offset,
                  std::span<std::byte> buffer) {
  if (!stream.resident.empty()) return CopyResident(stream, offset, buffer);
  if (offset.value >= stream.size) return 0;
  const auto wanted = static_cast<size_t>(std::min<uint64_t>(buffer.size(), stream.size - offset.value));
  const uint64_t written = stream.initialized > offset.value ? stream.initialized - offset.value : 0;
  const auto count = static_cast<size_t>(std::min<uint64_t>(wanted, written));
  if (count != 0) {
    const size_t got = ReadWritten(source, stream, offset, buffer.first(count));
    if (got < count) return got;
  }
  std::fill_n(buffer.begin() + static_cast<ptrdiff_t>(count), wanted - count, std::byte{0});
  return wanted;
}

}  // namespace quilmark
