#include "cli/find.h"

#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <shared_mutex>

#include "cli/complain.h"
#include "cli/drive_plan.h"
#include "cli/exit_code.h"
#include "cli/hit_writer.h"
#include "cli/narrow.h"
#include "cli/query_text.h"
#include "config/language_setting.h"
#include "index/engine/search_engine.h"
#include "index/follow/usn_monitor.h"
#include "platform/background.h"
#include "platform/console.h"
#include "platform/text.h"
#include "platform/utf.h"
#include "search/filter/filter_categories.h"
#include "search/results/search_pipeline.h"
#include "search/sort/sort.h"

namespace quilmark {

namespace {

constexpr uint64_t kInteractiveLimit = 10;
constexpr uint32_t kPollMs = 50;  // how soon an interrupt is noticed while a search runs
constexpr std::u16string_view kDefaultLanguage = u"en-us";
constexpr const char* kSearchFailed = "the search failed, perhaps for want of memory";
constexpr const char* kOutputFails = "standard output cannot be written to";

struct Answer {
  std::shared_ptr<const ResultSet> results;  // null if interrupted
  double milliseconds = 0;
};

// Starts a search as the window does, and waits for its final set. Null if the user interrupted, or if
// an exception ended the job, which is in the log then.
std::shared_ptr<const ResultSet> Search(PostQueue& queue, const std::u16string& text) {
  std::u16string trimmed = text;
  TrimQuery(trimmed);
  if (trimmed.empty()) {
    RefreshSearchResultsAfterIndexUpdate();  // no text: everything
  } else {
    DoSearchAsync(trimmed, false, false);
  }
  while (!ShutdownRequested) {
    const bool isEnded = WaitForBackgroundJobs(0);
    const auto message = queue.Take(isEnded ? 0 : kPollMs);
    if (!message && isEnded) break;
    if (!message || message->message != WM_SEARCH_RESULTS ||
        message->first != TheSearch().CurrentResults.Number())
      continue;
    if (message->second != static_cast<int64_t>(ResultKind::kFinal)) continue;
    auto results = HeldResults();
    // Nobody else looks at them here, and what is narrowed and sorted comes beside them.
    TheSearch().CurrentResults.Change([empty = SearchResults()](SearchResults& held) { held = empty; });
    return results;
  }
  return nullptr;
}

Answer Ask(PostQueue& queue, const std::u16string& text, const Narrowing& narrowing) {
  const auto start = std::chrono::steady_clock::now();
  auto results = Search(queue, text);
  if (results != nullptr) results = NarrowResults(std::move(results), narrowing);
  const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
  return {std::move(results), took.count()};
}

struct IndexFigures {
  uint64_t files = 0, folders = 0, bytes = 0;
};

IndexFigures CountIndex() {
  IndexFigures figures;
  for (const VolumeIndex* const volume : CopyVolumes(Engine())) {
    const std::shared_lock lock(volume->indexLock);
    for (uint32_t i = 0; i < volume->records.size(); ++i) {
      if (volume->records[i].deleted) continue;
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

// Chooses where searches look. False if the drive that is named is not in the index, such as one without
// a medium.
bool ApplyScope(const std::string& scope) {
  if (scope == "all") return true;
  if (scope == "desktop") {
    TheSearch().scope = {.scopeIndex = kScopeDesktop};
    return true;
  }
  const auto volumes = CopyVolumes(Engine());
  for (size_t i = 0; i < volumes.size(); ++i) {
    if (!EqualNoCase(volumes[i]->drive, FromUtf8(scope))) continue;
    TheSearch().scope = {.scopeIndex = kScopeFirstVolume + static_cast<int>(i)};
    return true;
  }
  return false;
}

// The table of the window's filter bar, whose files are left as they are.
FilterTable CategoriesOfUser() {
  const std::u16string language = LoadLanguageSetting();
  return ReadFilterCategories(language.empty() ? kDefaultLanguage : language, false);
}

// Empty with a complaint if there is no such category.
std::optional<Narrowing> MakeNarrowing(const FindOptions& options) {
  FilterTable table;
  size_t category = 0;
  if (options.filters.category) {
    table = CategoriesOfUser();
    const auto found = FindCategory(table, *options.filters.category);
    if (!found.error.empty()) {
      Complain("--category: " + found.error);
      return std::nullopt;
    }
    category = found.value;
  }
  const bool isOrdered = options.sort && !options.count;
  const bool sortsBySize = isOrdered && options.sort->column == kColumnSize;
  const bool usesTotals = sortsBySize || (options.json && !options.count);
  return Narrowing{.filter = MakeHitFilter(options.filters, table, category),
                   .readsTotals = options.totals && usesTotals,
                   .order = isOrdered ? options.sort : std::nullopt};
}

HitFormat FormatOf(const FindOptions& options) {
  return {.json = options.json,
          .drivePaths = options.drivePaths,
          .end = options.null ? '\0' : '\n',
          .isShown = IsTerminal(stdout),
          .facts = NeedsAttributes(options),
          .totals = options.totals ? FolderTotals::kRead : FolderTotals::kUnknown};
}

WriteOutcome WriteAnswer(const ResultSet& results, const FindOptions& options) {
  if (options.count) return WriteText(std::to_string(results.size()) + "\n", stdout);
  return WriteHits(results, options.limit, FormatOf(options), stdout);
}

int FindOnce(PostQueue& queue, const FindOptions& options, const Narrowing& narrowing) {
  const Answer answer = Ask(queue, QueryTextOf(options.query), narrowing);
  if (answer.results == nullptr) return ShutdownRequested ? kExitInterrupted : Complain(kSearchFailed);
  const ResultSet& results = *answer.results;
  if (options.stats) std::fprintf(stderr, "%zu hits in %.3f ms\n", results.size(), answer.milliseconds);
  const WriteOutcome written = WriteAnswer(results, options);
  if (written == WriteOutcome::kFailed) return Complain(kOutputFails);
  if (ShutdownRequested) return kExitInterrupted;
  return results.empty() ? kExitNothing : kExitFound;
}

// True if a program reads the output: it gets hits alone, and an empty line after those of each query.
bool IsForAProgram(const FindOptions& options) { return options.count || options.json; }

WriteOutcome AnswerProgram(const ResultSet& results, const FindOptions& options) {
  const WriteOutcome written = WriteAnswer(results, options);
  return written == WriteOutcome::kDone ? WriteText("\n", stdout) : written;
}

WriteOutcome RefuseLine(const FindOptions& options) {
  constexpr const char* kRefusal = "content search is not available here";
  if (!IsForAProgram(options)) return WriteText(std::string(kRefusal) + "\n", stdout);
  Complain(kRefusal);
  return WriteText("\n", stdout);
}

// Prints the answer to one query of a dialogue; raises `found` if it has a hit.
WriteOutcome AnswerLine(PostQueue& queue, const std::string& line, const FindOptions& options,
                        const Narrowing& narrowing, bool& found) {
  if (IsContentQuery(line)) return RefuseLine(options);
  const Answer answer = Ask(queue, QueryTextOf(line), narrowing);
  if (answer.results == nullptr && !ShutdownRequested) Complain(kSearchFailed);
  if (answer.results == nullptr) return WriteOutcome::kStopped;
  const ResultSet& results = *answer.results;
  found = found || !results.empty();
  if (IsForAProgram(options)) return AnswerProgram(results, options);
  const WriteOutcome written =
      WriteHits(results, options.limit.value_or(kInteractiveLimit),
                {.drivePaths = options.drivePaths, .isShown = IsTerminal(stdout)}, stdout);
  if (written != WriteOutcome::kDone) return written;
  char figures[64];
  std::snprintf(figures, sizeof figures, "%zu hits, %.3f ms\n", results.size(), answer.milliseconds);
  return WriteText(figures, stdout);
}

int FindInteractively(PostQueue& queue, const FindOptions& options, const Narrowing& narrowing) {
  bool found = false;
  const bool isPrompted = IsTerminal(stdin) && IsTerminal(stdout) && !IsForAProgram(options);
  for (;;) {
    // A stream that fails says so with the answer.
    if (isPrompted) (void)WriteText("> ", stdout);
    const std::optional<std::string> line = ReadInputLine();
    if (!line || ShutdownRequested) break;
    if (!isPrompted && !IsForAProgram(options)) (void)WriteText("> " + *line + "\n", stdout);
    const WriteOutcome outcome = AnswerLine(queue, *line, options, narrowing, found);
    if (outcome == WriteOutcome::kFailed) return Complain(kOutputFails);
    if (outcome == WriteOutcome::kStopped) break;
  }
  if (ShutdownRequested) return kExitInterrupted;
  return found ? kExitFound : kExitNothing;
}

int IndexAndAnswer(const FindOptions& options, const Narrowing& narrowing) {
  const DrivePlan plan = PlanDrives(options);
  if (!plan.error.empty()) return Complain(plan.error);
  if (const std::string error = MapPlannedDrives(plan.drives); !error.empty()) return Complain(error);
  const IndexOutcome indexed = IndexDrives(plan.drives, IsTerminal(stderr));
  if (ShutdownRequested) return kExitInterrupted;
  if (!indexed.error.empty()) return Complain(indexed.error);
  if (options.stats) PrintIndexStats(indexed.milliseconds);
  if (!ApplyScope(options.scope)) return Complain("drive " + options.scope + " cannot be read");

  TheSearch().options = {.initials = options.initials, .waitsForWriters = true};
  PostQueue queue;
  TheSearch().hooks.window = queue.Target();
  const int exitCode = options.interactive ? FindInteractively(queue, options, narrowing)
                                           : FindOnce(queue, options, narrowing);
  SupersedeSearch();  // whatever still runs is stale
  return exitCode;
}

}  // namespace

int RunFind(const FindOptions& options) {
  if (!options.interactive && IsContentQuery(options.query)) {
    return Complain("content search (s:...) is not available in find");
  }
  const auto narrowing = MakeNarrowing(options);
  if (!narrowing) return kExitError;
  OnInterrupt([] { ShutdownRequested = true; });
  const int exitCode = IndexAndAnswer(options, *narrowing);
  ShutdownRequested = true;
  for (VolumeIndex* const volume : CopyVolumes(Engine())) StopMonitor(*volume);
  WaitForBackgroundJobs(1'000);
  return exitCode;
}

}  // namespace quilmark
