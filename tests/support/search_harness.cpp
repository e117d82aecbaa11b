#include "support/search_harness.h"

#include <gtest/gtest.h>

#include <utility>

#include "platform/background.h"
#include "search/attributes/attr_cache_file.h"
#include "support/dropped_messages.h"

namespace quilmark {

namespace {

constexpr uint32_t kPatienceMs = 60'000;  // a sanitizer's run on a busy machine is slow

// As at the start of the program, with nothing of a former test.
void ResetState() {
  SearchSession& session = TheSearch();
  session.CurrentResults.Supersede([](SearchResults& held) { held = {}; });
  session.FilteredResults.Supersede([](FilteredRows& shown) { shown = {}; });
  session.scope = {};
  session.options = {};
  session.SuppressRecentView = false;
  session.CurrentQueryText.clear();
  session.hooks = {};
  TheAttrCacheFile().isLoaded = true;
}

}  // namespace

void HoldRows(std::shared_ptr<const ResultSet> rows) {
  TheSearch().CurrentResults.Change([&](SearchResults& held) { held.rows = std::move(rows); });
}

void SetSort(int column, bool ascending) {
  TheSearch().CurrentResults.Change([&](SearchResults& held) {
    held.SortColumn = column;
    held.SortAscending = ascending;
  });
}

void SetDisplayCount(uint64_t count) {
  TheSearch().FilteredResults.Change([count](FilteredRows& shown) { shown.DisplayCount = count; });
}

uint64_t SearchNumber() { return TheSearch().CurrentResults.Number(); }
Ticket LatestSearch() { return TheSearch().CurrentResults.Latest(); }

Ticket StaleTicket() {
  static Generation generation;
  const Ticket stale = generation.Supersede();
  generation.Supersede();
  return stale;
}

int SortColumn() { return TheSearch().CurrentResults.Get().SortColumn; }
bool SortAscending() { return TheSearch().CurrentResults.Get().SortAscending; }
std::shared_ptr<const ResultSet> FilteredSet() { return TheSearch().FilteredResults.Get().rows; }

SearchHarness::SearchHarness() {
  ShutdownRequested = false;
  Engine().volumes.clear();
  Engine().ready = false;
  ResetState();
  SearchHooks& hooks = TheSearch().hooks;
  hooks.window = queue.Target();
  hooks.readSearchBox = [this] { return searchBox; };
  hooks.showStatus = [this](std::u16string_view key, std::u16string_view) {
    statusKeys.emplace_back(key);
  };
  hooks.restartTimer = [this](uint32_t id, uint32_t delayMs) {
    EXPECT_EQ(id, TIMER_SEARCH_DEBOUNCE);
    timerDelays.push_back(delayMs);
  };
}

SearchHarness::~SearchHarness() {
  ShutdownRequested = true;
  EXPECT_TRUE(WaitForBackgroundJobs(kPatienceMs));
  ShutdownRequested = false;
  DropMessages(queue);
  ResetState();
  Engine().volumes.clear();
  Engine().ready = false;
}

PostedMessage SearchHarness::Next() {
  const auto message = queue.Take(kPatienceMs);
  EXPECT_TRUE(message.has_value()) << "no message came";
  return message.value_or(PostedMessage{});
}

std::vector<ResultKind> SearchHarness::KindsUntilFinal() {
  std::vector<ResultKind> kinds;
  while (kinds.empty() || kinds.back() != ResultKind::kFinal) {
    const PostedMessage message = Next();
    if (message.message == 0) break;
    if (message.message == WM_SEARCH_STATUS) (void)TakeText(message);
    if (message.message != WM_SEARCH_RESULTS || message.first != SearchNumber()) continue;
    kinds.push_back(static_cast<ResultKind>(message.second));
  }
  return kinds;
}

bool SearchHarness::IsQuiet() {
  return WaitForBackgroundJobs(kPatienceMs) && !queue.Take(0).has_value();
}

std::vector<std::u16string> SearchHarness::ShownPaths() const {
  std::vector<std::u16string> paths;
  for (const MatchItem& hit : *HeldResults()) paths.push_back(BuildPathLocked(*hit.volume, hit.index));
  return paths;
}

}  // namespace quilmark
