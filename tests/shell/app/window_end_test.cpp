#include "shell/app/window_end.h"

#include <gtest/gtest.h>

#include "config/attr_counters.h"
#include "config/config_directory.h"
#include "platform/text_file.h"
#include "shell/list/scripted_icons.h"
#include "shell/window_harness.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

using Calls = std::vector<std::string>;

TEST(WindowEnd, ReleasesEverythingInOrder) {
  WindowHarness harness;
  AddVolume(Engine(), MakeTestVolume(u"Q:"));
  ScriptedIcons source;
  IconCache icons(source);
  icons.Prepare();
  harness.app.search.icons = &icons;
  source.whenGone = [&] { harness.window.calls.push_back("icon gone"); };
  harness.app.trayIconAdded = true;
  bool shutdownAtSave = false;
  harness.engine.save = [&] {
    shutdownAtSave = ShutdownRequested;
    harness.window.calls.push_back("saveAttributes");
  };
  harness.window.timers = {{30002, 1}, {30009, 1}, {30014, 1}};

  EndWindow(harness.app, harness.window, harness.window);

  EXPECT_EQ(harness.window.calls,
            (Calls{"Placement",         "StopTimer 30002",   "StopTimer 30003", "StopTimer 30004",
                   "StopTimer 30005",   "StopTimer 30006",   "StopTimer 30007", "StopTimer 30008",
                   "StopTimer 30014",   "StopTimer 30009",   "StopTimer 30010", "StopTimer 30011",
                   "StopTimer 30013",   "CloseOtherWindows", "RemoveTrayIcon",  "UnregisterHotkeys",
                   "ReleaseBrushes",    "saveAttributes",    "icon gone",       "icon gone",
                   "ReleaseBackBuffer", "ReleaseFonts",      "QuitMessageLoop"}));
  EXPECT_TRUE(shutdownAtSave);
  EXPECT_TRUE(harness.window.timers.empty());
  EXPECT_TRUE(Engine().volumes.empty());
  EXPECT_FALSE(harness.app.trayIconAdded);
  EXPECT_EQ(harness.app.mainWindow, nullptr);
  EXPECT_TRUE(ReadTextFile(GetConfigDirectory() + u"\\window.ini")->starts_with(u"width=900\n"));
  ShutdownRequested = false;
}

TEST(WindowEnd, WritesTheSummaryOfTheRun) {
  WindowHarness harness;
  EndWindow(harness.app, harness.window, harness.window);
  const auto text = ReadTextFile(GetConfigDirectory() + u"\\perf_metrics.log");
  ASSERT_TRUE(text.has_value());
  EXPECT_TRUE(text->ends_with(u"] " + SummaryMetricText(AttrCounters()) + u"\n"));
  ShutdownRequested = false;
}

}  // namespace
}  // namespace quilmark
