#include "support/search_harness.h"

#include <gtest/gtest.h>

#include <mutex>

#include "platform/background.h"
#include "search/attributes/attr_cache_file.h"

namespace quilmark {

namespace {

constexpr uint32_t kPatienceMs = 60'000;  // a sanitizer's run on a busy machine is slow

void ResetState() {
  const std::scoped_lock lock(ResultsLock);
  CurrentResults = std::make_shared<ResultSet>();
  SortColumn = -1;
  HeldOrder = {};
  isAttrCacheLoaded = true;
  SortAscending = true;
}

}  // namespace

SearchHarness::SearchHarness() {
  ShutdownRequested = false;
  Engine().volumes.clear();
  Engine().ready = false;
  scopeIndex = kScopeAll;
  scopeDrive = 0;
  SuppressRecentView = false;
  initialSearchEnabled = true;
  CurrentQueryText.clear();
  ResetState();
  searchHooks = {};
  searchHooks.window = queue.Target();
  searchHooks.readSearchBox = [this] { return searchBox; };
  searchHooks.showStatus = [this](std::u16string_view key, std::u16string_view) {
    statusKeys.emplace_back(key);
  };
  searchHooks.restartTimer = [this](uint32_t id, uint32_t delayMs) {
    EXPECT_EQ(id, TIMER_SEARCH_DEBOUNCE);
    timerDelays.push_back(delayMs);
  };
}

SearchHarness::~SearchHarness() {
  ShutdownRequested = true;
  EXPECT_TRUE(WaitForBackgroundJobs(kPatienceMs));
  ShutdownRequested = false;
  searchHooks = {};
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
    if (message.message != WM_SEARCH_RESULTS || message.first != searchGeneration) continue;
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
