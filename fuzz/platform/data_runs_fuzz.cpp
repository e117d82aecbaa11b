// Any bytes as mapping pairs: no run is empty, the cursor moves forward, and a stream made of them has
// its extents in order and on the volume.
#include <cstdint>
#include <cstdlib>

#include "platform/ntfs/data_runs.h"
#include "platform/ntfs/ntfs_stream.h"

using namespace quilmark;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto bytes = std::as_bytes(std::span(data, size));
  RunCursor cursor{.runs = bytes};
  size_t before = 0;
  while (const auto run = NextRun(cursor)) {
    if (run->clusters == ClusterCount(0) || cursor.offset <= before || cursor.offset > size)
      std::abort();
    before = cursor.offset;
  }

  const NtfsGeometry geometry{
      .sectorBytes = 512, .clusterBytes = 4'096, .recordBytes = 1'024, .sectors = 80'000};
  NtfsStream stream;
  const bool isWhole = AppendRuns(stream, {.isResident = false, .runs = bytes}, geometry);
  if (isWhole && cursor.malformed) std::abort();
  StreamOffset end;
  for (const NtfsExtent& extent : stream.extents) {
    if (extent.start < end || extent.length == 0) std::abort();
    if ((extent.place + extent.length).value > geometry.Clusters().value * geometry.clusterBytes)
      std::abort();
    end = extent.End();
  }
  return 0;
}
