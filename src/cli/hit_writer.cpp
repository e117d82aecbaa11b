#include "cli/hit_writer.h"

#include <algorithm>
#include <cerrno>
#include <nlohmann/json.hpp>
#include <shared_mutex>
#include <span>
#include <vector>

#include "platform/console.h"
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

nlohmann::ordered_json JsonTime(FileTime time) {
  if (time == 0) return nullptr;
  return FormatUtc(time);
}

void AddFacts(nlohmann::ordered_json& object, const HitFacts& facts) {
  object["size"] = nullptr;
  if (facts.size) object["size"] = *facts.size;
  object["modified"] = JsonTime(facts.modified);
  object["created"] = JsonTime(facts.created);
}

// The end of the hits, from the first on, that lie on one volume and are written under one lock.
size_t EndOfBlock(const ResultSet& results, size_t first, size_t count) {
  const size_t most = std::min(count, first + kHitsALock);
  size_t end = first + 1;
  while (end < most && results[end].volume == results[first].volume) ++end;
  return end;
}

// The facts of the hits that are written next; empty where facts are not shown.
std::vector<HitFacts> FactsOfBlock(std::span<const MatchItem> hits, HitFormat format) {
  std::vector<HitFacts> facts;
  if (!format.json || !format.facts) return facts;
  for (const MatchItem& hit : hits) facts.push_back(FactsOf(hit, format.totals));
  return facts;
}

bool IsControl(char byte) { return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F; }

}  // namespace

std::string FormatHit(std::u16string_view path, bool isDirectory, HitFormat format,
                      const HitFacts& facts) {
  std::string shown = format.drivePaths ? ToHostBytes(path) : HostPathBytes(path);
  if (!format.json && format.isShown) std::replace_if(shown.begin(), shown.end(), IsControl, '?');
  if (!format.json) return shown;
  nlohmann::ordered_json object = {{"path", std::move(shown)}, {"dir", isDirectory}};
  if (format.facts) AddFacts(object, facts);
  // A name that is no UTF-8 has no form in JSON: what is malformed becomes U+FFFD.
  return object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

WriteOutcome WriteText(std::string_view text, std::FILE* stream) {
  const bool isWritten =
      std::fwrite(text.data(), 1, text.size(), stream) == text.size() && std::fflush(stream) == 0;
  if (ShutdownRequested || (!isWritten && IsReaderGone(stream, errno))) return WriteOutcome::kStopped;
  return isWritten ? WriteOutcome::kDone : WriteOutcome::kFailed;
}

WriteOutcome WriteHits(const ResultSet& results, std::optional<uint64_t> limit, HitFormat format,
                       std::FILE* stream) {
  const size_t count =
      static_cast<size_t>(std::min<uint64_t>(results.size(), limit.value_or(results.size())));
  std::string block;
  std::u16string path;
  for (size_t i = 0; i < count;) {
    const size_t first = i, last = EndOfBlock(results, first, count);
    // Before the lock is taken: reading facts takes it too.
    const auto facts = FactsOfBlock(std::span(results).subspan(first, last - first), format);
    VolumeIndex& volume = *results[i].volume;
    const std::shared_lock lock(volume.indexLock);
    HitFormat shown = format;
    shown.drivePaths =
        format.drivePaths || IsNtfs(volume);  // what lies in an image has no path of the host
    for (; i < last; ++i) {
      BuildPathInto(volume, results[i].index, path);
      const bool isDirectory = volume.records[results[i].index].isDirectory;
      block += FormatHit(path, isDirectory, shown, facts.empty() ? HitFacts() : facts[i - first]);
      block.push_back(format.end);
      if (block.size() < kBlockBytes) continue;
      if (const auto outcome = WriteBlock(block, stream); outcome != WriteOutcome::kDone) return outcome;
    }
  }
  return WriteBlock(block, stream);
}

}  // namespace quilmark
