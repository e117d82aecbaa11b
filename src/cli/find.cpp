#include "cli/find.h"

#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <shared_mutex>

#include "cli/complain.h"
#include "cli/drive_plan.h"
#include "cli/exit_code.h"
#include "cli/hit_writer.h"
#include "cli/query_text.h"
#include "index/search_engine.h"
#include "index/usn_monitor.h"
#include "platform/background.h"
#include "platform/console.h"
#include "platform/text.h"
#include "platform/utf.h"
#include "search/search_pipeline.h"

namespace quilmark {

namespace {

constexpr uint64_t kInteractiveLimit = 10;
constexpr uint32_t kPollMs = 50;  // how soon an interrupt is noticed while a search runs
constexpr const char* kOutputFails = "standard output cannot be written to";

struct Answer {
  std::shared_ptr<const ResultSet> results;  // null if interrupted
  double milliseconds = 0;
};

// Runs one query through the pipeline, as the window does, and waits for the final set.
Answer Ask(PostQueue& queue, const std::u16string& text) {
  const auto start = std::chrono::steady_clock::now();
  std::u16string trimmed = text;
  TrimQuery(trimmed);
  if (trimmed.empty()) {
    RefreshSearchResultsAfterIndexUpdate();  // no text: everything
  } else {
    DoSearchAsync(trimmed, false, false);
  }
  while (!ShutdownRequested) {
    const auto message = queue.Take(kPollMs);
    if (!message || message->message != WM_SEARCH_RESULTS || message->first != searchGeneration)
      continue;
    if (message->second != static_cast<int64_t>(ResultKind::kFinal)) continue;
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    return {HeldResults(), took.count()};
  }
  return {};
}

struct IndexFigures {
  uint64_t files = 0, folders = 0, bytes = 0;
};

IndexFigures CountIndex() {
  IndexFigures figures;
  for (const VolumeIndex* const volume : CopyVolumes(Engine())) {
    const std::shared_lock lock(volume->indexLock);
    for (uint32_t i = 0; i < volume->records.size(); ++i) {
      ++(volume->records[i].isDirectory ? figures.folders : figures.files);
    }
    figures.bytes += MemoryOf(*volume);
  }
  return figures;
}

void PrintIndexStats(double milliseconds) {
  const IndexFigures figures = CountIndex();
  const uint64_t records = figures.files + figures.folders;
  std::fprintf(stderr, "%" PRIu64 " files, %" PRIu64 " folders in %.0f ms, %.0f bytes a record\n",
               figures.files, figures.folders, milliseconds,
               static_cast<double>(figures.bytes) / static_cast<double>(records));
}

// Sets scopeIndex. False if the drive named is not in the index, as a drive without a medium.
bool ApplyScope(const std::string& scope) {
  if (scope == "all") return true;
  if (scope == "desktop") {
    scopeIndex = kScopeDesktop;
    return true;
  }
  const auto volumes = CopyVolumes(Engine());
  for (size_t i = 0; i < volumes.size(); ++i) {
    if (!EqualNoCase(volumes[i]->drive, FromUtf8(scope))) continue;
    scopeIndex = kScopeFirstVolume + static_cast<int>(i);
    return true;
  }
  return false;
}

int FindOnce(PostQueue& queue, const FindOptions& options) {
  const Answer answer = Ask(queue, QueryTextOf(options.query));
  if (answer.results == nullptr) return kExitInterrupted;
  const ResultSet& results = *answer.results;
  if (options.stats) std::fprintf(stderr, "%zu hits in %.3f ms\n", results.size(), answer.milliseconds);
  const WriteOutcome written =
      options.count ? WriteText(std::to_string(results.size()) + "\n", stdout)
                    : WriteHits(results, options.limit, {options.json, options.drivePaths}, stdout);
  if (written == WriteOutcome::kFailed) return Complain(kOutputFails);
  if (ShutdownRequested) return kExitInterrupted;
  return results.empty() ? kExitNothing : kExitFound;
}

// Prints the answer to one query of a dialogue; raises `found` if it has a hit.
WriteOutcome AnswerLine(PostQueue& queue, const std::string& line, const FindOptions& options,
                        bool& found) {
  if (IsContentQuery(line)) return WriteText("content search is not available here\n", stdout);
  const Answer answer = Ask(queue, QueryTextOf(line));
  if (answer.results == nullptr) return WriteOutcome::kStopped;
  const ResultSet& results = *answer.results;
  found = found || !results.empty();
  const WriteOutcome written = WriteHits(results, options.limit.value_or(kInteractiveLimit),
                                         {.drivePaths = options.drivePaths}, stdout);
  if (written != WriteOutcome::kDone) return written;
  char figures[64];
  std::snprintf(figures, sizeof figures, "%zu hits, %.3f ms\n", results.size(), answer.milliseconds);
  return WriteText(figures, stdout);
}

int FindInteractively(PostQueue& queue, const FindOptions& options) {
  bool found = false;
  const bool isPrompted = IsTerminal(stdin) && IsTerminal(stdout);
  for (;;) {
    if (isPrompted) WriteText("> ", stdout);
    const std::optional<std::string> line = ReadInputLine();
    if (!line || ShutdownRequested) break;
    if (!isPrompted) WriteText("> " + *line + "\n", stdout);
    const WriteOutcome outcome = AnswerLine(queue, *line, options, found);
    if (outcome == WriteOutcome::kFailed) return Complain(kOutputFails);
    if (outcome == WriteOutcome::kStopped) break;
  }
  if (ShutdownRequested) return kExitInterrupted;
  return found ? kExitFound : kExitNothing;
}

int IndexAndAnswer(const FindOptions& options) {
  const DrivePlan plan = PlanDrives(options);
  if (!plan.error.empty()) return Complain(plan.error);
  if (const std::string error = MapPlannedDrives(plan.drives); !error.empty()) return Complain(error);
  const IndexOutcome indexed = IndexDrives(plan.drives, IsTerminal(stderr));
  if (ShutdownRequested) return kExitInterrupted;
  if (!indexed.error.empty()) return Complain(indexed.error);
  if (options.stats) PrintIndexStats(indexed.milliseconds);
  if (!ApplyScope(options.scope)) return Complain("drive " + options.scope + " cannot be read");

  initialSearchEnabled = options.initials;
  PostQueue queue;
  searchHooks.window = queue.Target();
  const int exitCode =
      options.interactive ? FindInteractively(queue, options) : FindOnce(queue, options);
  ++searchGeneration;  // whatever still runs is stale
  return exitCode;
}

}  // namespace

int RunFind(const FindOptions& options) {
  if (!options.interactive && IsContentQuery(options.query)) {
    return Complain("content search (s:...) is not available in find");
  }
  OnInterrupt([] { ShutdownRequested = true; });
  const int exitCode = IndexAndAnswer(options);
  ShutdownRequested = true;
  for (VolumeIndex* const volume : CopyVolumes(Engine())) StopMonitor(*volume);
  WaitForBackgroundJobs(1'000);
  return exitCode;
}

}  // namespace quilmark
