#include "cli/hit_writer.h"

#include <algorithm>
#include <cerrno>
#include <nlohmann/json.hpp>
#include <shared_mutex>

#include "platform/files.h"
#include "platform/utf.h"

namespace quilmark {

namespace {

constexpr size_t kBlockBytes = 1 << 16;
constexpr size_t kHitsALock = 1'024;

WriteOutcome WriteBlock(std::string& block, std::FILE* stream) {
  const WriteOutcome outcome = WriteText(block, stream);
  block.clear();
  return outcome;
}

}  // namespace

std::string FormatHit(std::u16string_view path, bool isDirectory, HitFormat format) {
  std::string shown = format.drivePaths ? ToHostBytes(path) : HostPathBytes(path);
  if (!format.json) return shown;
  const nlohmann::ordered_json object = {{"path", std::move(shown)}, {"dir", isDirectory}};
  // A name that is no UTF-8 has no form in JSON: what is malformed becomes U+FFFD.
  return object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

WriteOutcome WriteText(std::string_view text, std::FILE* stream) {
  const bool isWritten =
      std::fwrite(text.data(), 1, text.size(), stream) == text.size() && std::fflush(stream) == 0;
  const bool isReaderGone = !isWritten && errno == EPIPE;
  if (ShutdownRequested || isReaderGone) return WriteOutcome::kStopped;
  return isWritten ? WriteOutcome::kDone : WriteOutcome::kFailed;
}

WriteOutcome WriteHits(const ResultSet& results, std::optional<uint64_t> limit, HitFormat format,
                       std::FILE* stream) {
  const size_t count =
      static_cast<size_t>(std::min<uint64_t>(results.size(), limit.value_or(results.size())));
  std::string block;
  std::u16string path;
  for (size_t i = 0; i < count;) {
    VolumeIndex& volume = *results[i].volume;
    const std::shared_lock lock(volume.indexLock);
    // What lies in an image has no path of the host.
    const HitFormat shown{.json = format.json, .drivePaths = format.drivePaths || IsNtfs(volume)};
    const size_t last = std::min(count, i + kHitsALock);
    for (; i < last && results[i].volume == &volume; ++i) {
      BuildPathInto(volume, results[i].index, path);
      block += FormatHit(path, volume.records[results[i].index].isDirectory, shown);
      block.push_back('\n');
      if (block.size() < kBlockBytes) continue;
      if (const auto outcome = WriteBlock(block, stream); outcome != WriteOutcome::kDone) return outcome;
    }
  }
  return WriteBlock(block, stream);
}

}  // namespace quilmark
