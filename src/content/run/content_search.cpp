#include "content/run/content_search.h"

#include <thread>
#include <utility>

#include "config/log.h"
#include "content/run/status_text.h"
#include "platform/format.h"
#include "search/results/content_candidates.h"

namespace quilmark {

namespace {

// Keeps what passes the size and time filters. False if the job went stale.
bool FilterCandidates(const SearchJob& job, const FilterSettings& settings, ResultSet& candidates) {
  if (candidates.empty() || !settings.HasSizeOrTime()) return true;
  const FilterContext context = MakeFilterContext(settings, NowFileTime());
  ResultSet kept;
  for (const MatchItem& candidate : candidates) {
    if (!job.ticket.IsCurrent()) return false;
    if (PassesContentFilter(context, candidate)) kept.push_back(candidate);
  }
  candidates = std::move(kept);
  return true;
}

std::shared_ptr<ContentRun> MakeRun(const SearchJob& job, const ContentQuery& query, MatchPlan plan,
                                    ResultSet candidates) {
  auto run = std::make_shared<ContentRun>();
  run->Generation = job.ticket;
  run->Candidates = std::move(candidates);
  run->plan = std::move(plan);
  run->plan.Groups = MakeContentGroups(query.Groups);
  run->plan.WideGroups = query.Groups;
  run->publish.keepSort = job.keepScroll ? KeepSort::kYes : KeepSort::kNo;
  return run;
}

uint64_t CountOf(const ContentRun& run, FileMatch match) {
  return run.outcomes[static_cast<size_t>(match)];
}

}  // namespace

std::u16string ContentMetric(const ContentRun& run) {
  return FormatText(
      u"content_search files=%zu hits=%zu cannot_open=%zu cannot_read=%zu too_large=%zu "
      u"placeholders=%zu "
      u"network=%zu no_archive=%zu hung=%zu",
      run.Processed.load(), CountOf(run, FileMatch::kHit), CountOf(run, FileMatch::kCannotOpen),
      CountOf(run, FileMatch::kCannotRead), CountOf(run, FileMatch::kTooLarge),
      CountOf(run, FileMatch::kPlaceholder), CountOf(run, FileMatch::kNetwork),
      CountOf(run, FileMatch::kNoArchive), run.hungFiles.load());
}

std::shared_ptr<ResultSet> SearchContent(const SearchJob& job, const ContentQuery& query,
                                         const SearchScope& scope, ContentSettings settings) {
  auto candidates = CollectContentCandidates(job, query, scope);
  if (!candidates || !FilterCandidates(job, settings.filter, *candidates)) {
    return std::make_shared<ResultSet>();  // stale: nobody sees it
  }
  if (candidates->empty()) {
    if (job.ticket.IsCurrent()) PostContentStatus(job.ticket, ContentStatus::kNoCandidates);
    return std::make_shared<ResultSet>();
  }
  const size_t count = candidates->size();
  const auto run = MakeRun(job, query, std::move(settings.plan), std::move(*candidates));
  const size_t threads =
      ContentThreadCount(settings.contentSearchThreads, std::thread::hardware_concurrency(), count);
  PostContentStatus(job.ticket, ContentStatus::kStart, count);
  auto hits = RunContentWorkers(run, threads);
  LogPerfMetric(ContentMetric(*run));
  return hits;
}

void InstallContentSearch(std::function<ContentSettings()> settings) {
  TheSearch().hooks.searchContent = [settings = std::move(settings)](const SearchJob& job,
                                                                     const ContentQuery& query,
                                                                     const SearchScope& scope) {
    return SearchContent(job, query, scope, settings());
  };
}

}  // namespace quilmark
