#include "shell/app/session_end.h"

#include <gtest/gtest.h>

#include <memory>

#include "config/attr_counters.h"
#include "config/config_directory.h"
#include "index/engine/search_engine.h"
#include "platform/text_file.h"
#include "search/attributes/attr_cache_file.h"
#include "shell/window_harness.h"
#include "support/gate.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

std::u16string TextOf(std::u16string_view name) {
  return ReadTextFile(GetConfigDirectory() + u"\\" + std::u16string(name)).value_or(u"");
}

// How often the attributes were saved at an end that may take a minute for them.
int SavesAtTheEnd(WindowHarness& harness) {
  auto saves = std::make_shared<std::atomic<int>>(0);
  harness.engine.save = [saves] { ++*saves; };
  SaveAtSessionEnd(harness.app, harness.window, 60'000);
  return *saves;
}

TEST(SessionEnd, SavesSettingsAttributesAndSummary) {
  WindowHarness harness;
  ++AttrCacheGeneration;
  EXPECT_EQ(SavesAtTheEnd(harness), 1);
  EXPECT_TRUE(TextOf(u"window.ini").starts_with(u"width=900\n"));
  EXPECT_TRUE(TextOf(u"perf_metrics.log").ends_with(u"] " + SummaryMetricText(AttrCounters()) + u"\n"));
}

// The system may end the program in the middle of it.
TEST(SessionEnd, LeavesTheAttributesAloneWhereNothingIsNew) {
  WindowHarness harness;
  TheAttrCacheFile().AttrSavedGeneration = AttrCacheGeneration.load();
  EXPECT_EQ(SavesAtTheEnd(harness), 0);
}

TEST(SessionEnd, LeavesTheAttributesAloneWhereTheyTakeTooLong) {
  WindowHarness harness;
  ++AttrCacheGeneration;
  TheAttrCacheFile().AttrLastSaveMs = 60'001;
  EXPECT_EQ(SavesAtTheEnd(harness), 0);
  TheAttrCacheFile().AttrLastSaveMs = 60'000;
  EXPECT_EQ(SavesAtTheEnd(harness), 1);
  TheAttrCacheFile().AttrLastSaveMs = 0;
}

// The program may live on for a while, as where another one asks the user whether to end.
TEST(SessionEnd, EndsNothing) {
  WindowHarness harness;
  AddVolume(Engine(), MakeTestVolume(u"Q:"));
  const PostTarget window = harness.app.mainWindow;
  SaveAtSessionEnd(harness.app, harness.window, 60'000);
  EXPECT_EQ(harness.window.calls, (std::vector<std::string>{"Placement"}));
  EXPECT_FALSE(ShutdownRequested);
  EXPECT_EQ(Engine().volumes.size(), 1u);
  EXPECT_EQ(harness.app.mainWindow, window);
}

TEST(SessionEnd, DoesNotWaitForADiskThatHangs) {
  WindowHarness harness;
  ++AttrCacheGeneration;
  auto disk = std::make_shared<Door>();
  harness.engine.save = [disk] { disk->Pass(); };
  SaveAtSessionEnd(harness.app, harness.window, 1);  // comes back
  EXPECT_NE(TextOf(u"perf_metrics.log").find(u"summary hit_ratio="), std::u16string::npos);
  disk->Open();
}

}  // namespace
}  // namespace quilmark
