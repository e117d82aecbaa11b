#include "cli/hit_writer.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <shared_mutex>

#include "platform/files.h"
#include "platform/utf.h"

namespace quilmark {

namespace {

constexpr size_t kBlockBytes = 1 << 16;
constexpr size_t kHitsALock = 1'024;

bool WriteBlock(std::string& block, std::FILE* stream) {
  const bool written = std::fwrite(block.data(), 1, block.size(), stream) == block.size();
  block.clear();
  return written && !ShutdownRequested;
}

}  // namespace

std::string FormatHit(std::u16string_view path, bool isDirectory, HitFormat format) {
  std::string shown = format.drivePaths ? ToHostBytes(path) : HostPathBytes(path);
  if (!format.json) return shown;
  const nlohmann::ordered_json object = {{"path", std::move(shown)}, {"dir", isDirectory}};
  // A name that is no UTF-8 has no form in JSON: what is malformed becomes U+FFFD.
  return object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

bool WriteHits(const ResultSet& results, std::optional<uint64_t> limit, HitFormat format,
               std::FILE* stream) {
  const size_t count =
      static_cast<size_t>(std::min<uint64_t>(results.size(), limit.value_or(results.size())));
  std::string block;
  std::u16string path;
  for (size_t i = 0; i < count;) {
    VolumeIndex& volume = *results[i].volume;
    const std::shared_lock lock(volume.indexLock);
    const size_t last = std::min(count, i + kHitsALock);
    for (; i < last && results[i].volume == &volume; ++i) {
      BuildPathInto(volume, results[i].index, path);
      block += FormatHit(path, volume.records[results[i].index].isDirectory, format);
      block.push_back('\n');
      if (block.size() >= kBlockBytes && !WriteBlock(block, stream)) return false;
    }
  }
  return WriteBlock(block, stream) && std::fflush(stream) == 0;
}

}  // namespace quilmark
