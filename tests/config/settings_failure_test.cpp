// Settings and logs, with each call to the system failing in turn.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "config/config_directory.h"
#include "config/hotkeys.h"
#include "config/language_setting.h"
#include "config/log.h"
#include "config/scratch_config.h"
#include "config/settings_file.h"
#include "config/ui_colors.h"
#include "config/window_settings.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/text_file.h"
#include "platform/utf.h"
#include "support/system_faults.h"

namespace quilmark {
namespace {

using Text = std::u16string;

// One file of settings, with two states of it: no line of either is that of a default, and a line that
// is half of one state and half of the other is a line of one of them.
struct SettingsKind {
  const char* name;
  void (*saveFormer)();
  void (*saveNew)();
  void (*load)();
  Text (*loaded)();  // what was loaded, as the text of the file
  void (*save)();    // what was loaded
};

HotkeyConfig hotkeys;
Text language;
WindowSize windowSize;

WindowSettings Window(int last) {
  return {.columnWidth = {310 + last, 320 + last, 330 + last, 340 + last, 350 + last, 360 + last},
          .sizePreset = last,
          .timePreset = last,
          .sizeUnit = last - 1,
          .sizeRange = last == 1 ? u"5-10" : u"5-20",
          .timeStart = 20'200'100 + last,
          .timeEnd = 20'210'100 + last,
          .sidebarLayout = true,
          .darkTheme = true,
          .initialSearchEnabled = false,
          .viewMode = last,
          .globalTrimOnToggle = true,
          .tableGridLines = false,
          .contentMaxFileSizeMB = 70 + last,
          .contentSearchThreads = last,
          .contentSearchExts = {last == 1 ? u".a" : u".b"}};
}

void SaveWindow(const WindowSettings& settings, WindowSize size) {
  CurrentWindowSettings = settings;
  SaveWindowSettings(WindowPlacement{.restored = size});
}

void SaveColors(uint32_t last) {
  CurrentOverrides = {};
  for (size_t role = 0; role < kColorRoles; ++role) {
    CurrentOverrides.overrideColor[role] = ColorOfHex(0x10'2030 + last);
    CurrentOverrides.overrideSet[role] = true;
  }
  SaveUiColors();
}

const SettingsKind kKinds[] = {
    {"hotkey.ini",
     [] {
       SaveHotkeys({2, 65, 4, 71});
     },
     [] {
       SaveHotkeys({3, 66, 5, 72});
     },
     [] { hotkeys = LoadHotkeys(); }, [] { return HotkeysText(hotkeys); }, [] { SaveHotkeys(hotkeys); }},
    {"language.ini", [] { SaveLanguageSetting(u"de-da"); }, [] { SaveLanguageSetting(u"de-db"); },
     [] { language = LoadLanguageSetting(); }, [] { return u"lang=" + language + u"\n"; },
     [] { SaveLanguageSetting(language); }},
    {"ui_colors.ini", [] { SaveColors(1); }, [] { SaveColors(2); }, LoadUiColors,
     [] { return UiColorsText(CurrentOverrides); }, SaveUiColors},
    {"window.ini",
     [] {
       SaveWindow(Window(1), {901, 601});
     },
     [] {
       SaveWindow(Window(2), {902, 602});
     },
     [] {
       windowSize = LoadWindowSettings({1100, 700}, 96);
     },
     [] { return WindowSettingsText(CurrentWindowSettings, {.restored = windowSize}); },
     [] { SaveWindow(CurrentWindowSettings, windowSize); }},
};

std::vector<Text> LinesOf(const Text& text) {
  std::vector<Text> lines;
  TextLines position{text};
  while (const auto line = NextLine(position)) lines.emplace_back(*line);
  return lines;
}

uint32_t pausedMs = 0;

struct SettingsRetries : testing::Test {
  SettingsRetries() {
    pauseBeforeRereading = [](uint32_t ms) { pausedMs += ms; };
  }
  ~SettingsRetries() override {
    pauseBeforeRereading = SleepMs;
    CurrentWindowSettings = {};
    CurrentOverrides = {};
  }

  ScratchConfig config;
};

struct SettingsFailures : SettingsRetries, testing::WithParamInterface<FaultKind> {
  Text TextOf(void (*save)(), const SettingsKind& kind) {
    save();
    kind.load();
    return kind.loaded();
  }
};
INSTANTIATE_TEST_SUITE_P(Each, SettingsFailures, testing::ValuesIn(kAllFaultKinds));

TEST_P(SettingsFailures, ASaveLeavesLinesOfTheFormerSettingsOrOfTheNew) {
  for (const SettingsKind& kind : kKinds) {
    SCOPED_TRACE(kind.name);
    std::vector<Text> known = LinesOf(TextOf(kind.saveNew, kind));
    const std::vector<Text> former = LinesOf(TextOf(kind.saveFormer, kind));
    known.insert(known.end(), former.begin(), former.end());
    const int failed = FailEachCall(GetParam(), [&](const auto& failing) {
      kind.saveFormer();
      failing(kind.saveNew);
      kind.load();
      const std::vector<Text> lines = LinesOf(kind.loaded());
      EXPECT_EQ(lines.size(), former.size());
      for (const Text& line : lines) {
        EXPECT_NE(std::find(known.begin(), known.end(), line), known.end()) << ToUtf8(line);
      }
    });
    EXPECT_GE(failed, 1);
  }
}

TEST_P(SettingsFailures, DefaultsAreNotSavedOverSettingsThatCouldNotBeRead) {
  for (const SettingsKind& kind : kKinds) {
    SCOPED_TRACE(kind.name);
    const Text former = TextOf(kind.saveFormer, kind);
    FailEachCall(GetParam(), [&](const auto& failing) {
      failing(kind.load);
      kind.save();
      kind.load();
      EXPECT_EQ(kind.loaded(), former);
    });
  }
}

TEST_F(SettingsRetries, EndAfterAFifthOfASecond) {
  for (const SettingsKind& kind : kKinds) {
    SCOPED_TRACE(kind.name);
    kind.saveFormer();
    uint32_t longestMs = 0;
    FailEachCall(FaultKind::kEnd, [&](const auto& failing) {
      pausedMs = 0;
      failing(kind.load);
      longestMs = std::max(longestMs, pausedMs);
    });
    EXPECT_GT(longestMs, 0u);
    EXPECT_LE(longestMs, 200u);
  }
}

TEST_P(SettingsFailures, WhatWasReadAtLastIsSavedAgain) {
  for (const SettingsKind& kind : kKinds) {
    SCOPED_TRACE(kind.name);
    const Text expected = TextOf(kind.saveNew, kind);
    FailEachCall(GetParam(), [&](const auto& failing) {
      kind.saveFormer();
      failing(kind.load);
      kind.load();
      kind.saveNew();
      kind.load();
      EXPECT_EQ(kind.loaded(), expected);
    });
  }
}

// Ended before the cut: the new text, and the end of the longer one behind it.
TEST(SettingsFile, OfALongerTextIsReadWithTheNewLinesInFront) {
  const ScratchConfig config;
  const HotkeyConfig former = {8, 70, 7, 71}, later = {4, 75, 5, 76};
  bool isMixed = false;
  FailEachCall(FaultKind::kEnd, [&](const auto& failing) {
    ASSERT_TRUE(
        WriteTextFile(ConfigPath(u"hotkey.ini"), HotkeysText(former) + u"# a remark of the user\n"));
    failing([&] { SaveHotkeys(later); });
    const HotkeyConfig found = LoadHotkeys();
    EXPECT_TRUE(found == former || found == later);
    const std::u16string text = ReadTextFile(ConfigPath(u"hotkey.ini")).value_or(u"");
    isMixed = isMixed || (found == later && text.size() > HotkeysText(later).size());
  });
  EXPECT_TRUE(isMixed);
}

TEST(SettingsFile, ThatCannotBeReadOnceIsReadAllTheSame) {
  const ScratchConfig config;
  const HotkeyConfig chosen = {8, 70, 7, 71}, later = {4, 75, 5, 76};
  SaveHotkeys(chosen);
  const int failed = FailEachCall(FaultKind::kOnce, [&](const auto& failing) {
    HotkeyConfig loaded;
    failing([&] { loaded = LoadHotkeys(); });
    EXPECT_EQ(loaded, chosen);
    SaveHotkeys(later);
    EXPECT_EQ(LoadHotkeys(), later);
    SaveHotkeys(chosen);
  });
  EXPECT_GE(failed, 1);
}

size_t WritesOf(const SystemFaults& calls) {
  const auto names = calls.Calls();
  return static_cast<size_t>(std::count_if(names.begin(), names.end(), [](const std::string& name) {
    return name == "write" || name == "pwrite" || name == "WriteFile" || name == "fsync" ||
           name == "FlushFileBuffers";
  }));
}

TEST_P(SettingsFailures, WhatTheFileHasIsNotWrittenAgain) {
  for (const SettingsKind& kind : kKinds) {
    SCOPED_TRACE(kind.name);
    kind.saveFormer();
    const SystemFaults calls(GetParam());
    kind.saveFormer();
    EXPECT_EQ(WritesOf(calls), 0u);
    kind.saveNew();
    EXPECT_GE(WritesOf(calls), 2u);
  }
}

TEST_P(SettingsFailures, WhatAnotherProgramHasChangedIsWrittenAgain) {
  for (const SettingsKind& kind : kKinds) {
    SCOPED_TRACE(kind.name);
    const Text expected = TextOf(kind.saveNew, kind);
    ASSERT_TRUE(RemoveFile(ConfigPath(FromUtf8(kind.name))));
    EXPECT_EQ(TextOf(kind.saveNew, kind), expected);
  }
}

TEST_P(SettingsFailures, TheDirectoryStaysTheOneThatWasChosen) {
  const std::u16string chosen = GetConfigDirectory();
  FailEachCall(GetParam(), [&](const auto& failing) {
    std::u16string path;
    failing([&] { path = GetConfigDirectory(); });
    EXPECT_EQ(path, chosen);
  });
}

TEST_P(SettingsFailures, ALineOfTheLogIsLostAndNoneBeforeIt) {
  FailEachCall(GetParam(), [&](const auto& failing) {
    RemoveFile(ConfigPath(u"perf_metrics.log"));
    LogPerfMetric(u"first");
    const auto former = ReadFileBytes(ConfigPath(u"perf_metrics.log"));
    const bool hasFailed = failing([] { LogPerfMetric(u"second"); });
    const auto now = ReadFileBytes(ConfigPath(u"perf_metrics.log"));
    EXPECT_TRUE(now->starts_with(*former));
    EXPECT_TRUE(hasFailed || now->ends_with("second\r\n"));
  });
}

TEST_P(SettingsFailures, ALineOfTheDiagnosticLogIsLostAndNothingElse) {
  FailEachCall(GetParam(), [](const auto& failing) {
    failing([] { LogBackgroundThreadException("a test that makes calls fail"); });
  });
}

}  // namespace
}  // namespace quilmark
