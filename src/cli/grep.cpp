#include "cli/grep.h"

#include <algorithm>
#include <cstdio>
#include <mutex>
#include <nlohmann/json.hpp>
#include <thread>

#include "cli/complain.h"
#include "cli/grep_report.h"
#include "cli/hit_writer.h"
#include "cli/query_text.h"
#include "content/run/archive_matcher.h"
#include "content/run/first_line.h"
#include "content/run/tree_search.h"
#include "content/settings/content_config.h"
#include "platform/background.h"
#include "platform/clock.h"
#include "platform/console.h"
#include "platform/files.h"
#include "platform/shutdown.h"
#include "platform/utf.h"

namespace quilmark {

namespace {

constexpr uint32_t kPollMs = 50;         // how soon an interrupt is noticed, and waiting lines go out
constexpr uint64_t kFlushEveryMs = 20;   // the first line goes out at once
constexpr size_t kMostWaiting = 65'536;  // bytes of lines

// Takes hits from the workers to standard output.
class HitPrinter {
 public:
  HitPrinter(const GrepOptions& options, std::vector<ContentGroup> groups)
      : options_(options), groups_(std::move(groups)), isShown_(IsTerminal(stdout)) {}

  // False once nobody reads any more.
  bool Print(std::u16string_view path) {
    if (options_.count) return true;
    const std::string line = LineOf(path);
    const std::scoped_lock lock(mutex_);
    waiting_ += line;
    const bool isDue = waiting_.size() >= kMostWaiting || TickMs() - flushedMs_ >= kFlushEveryMs;
    return isDue ? WriteLocked() : outcome_ == WriteOutcome::kDone;
  }

  // Writes what waits. False once nobody reads any more.
  bool Flush() {
    const std::scoped_lock lock(mutex_);
    return WriteLocked();
  }

  WriteOutcome Outcome() {
    const std::scoped_lock lock(mutex_);
    return outcome_;
  }

 private:
  std::string LineOf(std::u16string_view path) const {
    std::optional<FileLine> line;
    if (options_.line && !IsArchivePath(path, {})) {  // an archive has no lines
      PlainFileReader reader{.content = MakeFileContent(LinksOfFiles::kRefused)};
      line = FirstLineOf(path, groups_, reader);
    }
    return FormatGrepHit(path, line, {.json = options_.json, .isShown = isShown_});
  }

  bool WriteLocked() {
    if (outcome_ == WriteOutcome::kDone && !waiting_.empty()) outcome_ = WriteText(waiting_, stdout);
    waiting_.clear();
    flushedMs_ = TickMs();
    return outcome_ == WriteOutcome::kDone;
  }

  const GrepOptions options_;
  const std::vector<ContentGroup> groups_;
  const bool isShown_;
  std::mutex mutex_;
  std::string waiting_;                         // mutex_
  uint64_t flushedMs_ = 0;                      // mutex_
  WriteOutcome outcome_ = WriteOutcome::kDone;  // mutex_
};

size_t ThreadsOf(const GrepOptions& options) {
  const auto wanted = static_cast<int>(std::min<uint64_t>(options.threads, kMostContentThreads));
  return ContentThreadCount(wanted, std::thread::hardware_concurrency(), 0);
}

TreeQuery MakeTreeQuery(const GrepOptions& options, const QueryGroups& groups) {
  TreeQuery query;
  for (const std::string& path : options.paths) query.roots.push_back(PathFromHost(path));
  if (query.roots.empty()) query.roots.push_back(PathFromHost("."));
  query.exts = options.extensions;
  query.plan.Groups = MakeContentGroups(groups);
  query.plan.WideGroups = groups;
  ContentConfig config = ReadContentConfig();
  query.plan.ZipExts = std::move(config.zipExts);
  query.plan.InnerPatterns = std::move(config.innerPatterns);
  query.plan.makeArchiveMatcher = MakeZipMatcher;
  query.plan.contentMaxFileSizeMB = static_cast<int>(std::min<uint64_t>(options.maxSizeMB, 0x10'0000));
  query.plan.makeContent = [] { return MakeFileContent(LinksOfFiles::kRefused); };
  query.threads = ThreadsOf(options);
  query.ticket = Ticket::Unlimited();
  return query;
}

// What is wrong with a path, or an empty text.
std::string FindWrongPath(const GrepOptions& options) {
  for (const std::string& path : options.paths) {
    if (!IsExistingPath(PathFromHost(path))) return path + " does not exist";
  }
  return {};
}

void ShowProgress(const TreeFigures& figures) {
  std::fprintf(stderr, "\r%s\x1b[K", GrepProgress(figures).c_str());
  std::fflush(stderr);
}

// Returns when all is done, or the user interrupted.
void WaitWhilePrinting(TreeSearch& search, HitPrinter& printer, bool showProgress) {
  while (!ShutdownRequested && !WaitForTreeSearch(search, kPollMs)) {
    if (!printer.Flush()) break;
    if (showProgress) ShowProgress(FiguresOf(search));
  }
  if (showProgress) std::fputs("\r\x1b[K", stderr);
}

int ExitCodeOf(WriteOutcome outcome, uint64_t hits) {
  if (outcome == WriteOutcome::kFailed) return Complain("standard output cannot be written to");
  if (ShutdownRequested) return kExitInterrupted;
  return hits == 0 ? kExitNothing : kExitFound;
}

int SearchAndPrint(const GrepOptions& options, const QueryGroups& groups) {
  TreeQuery query = MakeTreeQuery(options, groups);
  // Held by the workers, one of which may come back from a file after the command has ended.
  const auto printer = std::make_shared<HitPrinter>(options, query.plan.Groups);
  query.onHit = [printer](std::u16string_view path) { return printer->Print(path); };
  const auto search = StartTreeSearch(std::move(query));
  // Lines on a terminal would be drawn over.
  const bool showProgress = IsTerminal(stderr) && (options.count || !IsTerminal(stdout));
  WaitWhilePrinting(*search, *printer, showProgress);
  const TreeFigures& figures = FiguresOf(*search);
  const uint64_t hits = figures.outcomes[static_cast<size_t>(FileMatch::kHit)];
  WriteOutcome outcome = printer->Flush() ? WriteOutcome::kDone : printer->Outcome();
  if (options.count && !ShutdownRequested) outcome = WriteText(std::to_string(hits) + "\n", stdout);
  if (outcome == WriteOutcome::kDone) std::fputs(GrepSummary(figures).c_str(), stderr);
  return ExitCodeOf(outcome, hits);
}

}  // namespace

int RunGrep(const GrepOptions& options) {
  const QueryGroups groups = ParseQueryGroups(QueryTextOf(options.query));
  if (groups.empty()) return Complain("no words to look for");
  if (const std::string wrong = FindWrongPath(options); !wrong.empty()) return Complain(wrong);
  OnInterrupt([] { ShutdownRequested = true; });
  const int exitCode = SearchAndPrint(options, groups);
  ShutdownRequested = true;
  WaitForBackgroundJobs(1'000);
  return exitCode;
}

}  // namespace quilmark
