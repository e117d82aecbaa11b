#include "config/window_settings.h"

#include <gtest/gtest.h>

#include "config/scratch_config.h"
#include "platform/files.h"
#include "platform/text_file.h"

namespace quilmark {
namespace {

using Columns = std::array<int, 6>;
using Extensions = std::vector<std::u16string>;

WindowSettings Read(std::u16string_view text) {
  WindowSettings settings;
  WindowSize size;
  ReadWindowSettings(text, size, settings);
  return settings;
}

WindowSize ReadSize(std::u16string_view text) {
  WindowSettings settings;
  WindowSize size = {1100, 700};
  ReadWindowSettings(text, size, settings);
  return size;
}

// A placement of which nothing but the size matters.
WindowPlacement Sized(int width, int height, int dpi = 96) {
  return {.restored = {width, height}, .dpi = dpi};
}

constexpr std::u16string_view kDefaultText =
    u"width=1100\nheight=700\n"
    u"col0=60\ncol1=280\ncol2=100\ncol3=160\ncol4=160\ncol5=400\n"
    u"sizePreset=0\ntimePreset=0\nsizeUnit=2\nsizeRange=\ntimeStart=0\ntimeEnd=0\n"
    u"filterLayout=topbar\nthemeMode=light\ninitialSearchEnabled=1\nviewMode=0\n"
    u"globalTrimOnToggle=0\ntableGridLines=1\ncontentMaxFileSizeMB=100\ncontentSearchThreads=0\n"
    u"contentSearchExts=\n";

TEST(ReadWindowSettings, LeavesTheDefaultsOfAnEmptyFile) {
  EXPECT_EQ(Read(u""), WindowSettings{});
  EXPECT_EQ(ReadSize(u""), (WindowSize{1100, 700}));
}

TEST(ReadWindowSettings, KeepsASizeFromItsLeastOn) {
  EXPECT_EQ(ReadSize(u"width=799\nheight=499\n"), (WindowSize{1100, 700}));
  EXPECT_EQ(ReadSize(u"width=800\nheight=500\n"), (WindowSize{800, 500}));
}

TEST(ReadWindowSettings, KeepsAColumnFromItsLeastOn) {
  EXPECT_EQ(Read(u"col0=30\ncol1=31\ncol2=29\ncol5=999\n").columnWidth,
            (Columns{30, 31, 100, 160, 160, 999}));
}

TEST(ReadWindowSettings, IgnoresColumnsThatDoNotExist) {
  EXPECT_EQ(Read(u"col6=100\ncol-1=100\ncol99999999999=100\n").columnWidth,
            WindowSettings{}.columnWidth);
}

TEST(ReadWindowSettings, ReadsTheNumberOfAColumnFromTheTextBehindCol) {
  EXPECT_EQ(Read(u"col 2=77\ncol3x=78\n").columnWidth, (Columns{60, 280, 77, 78, 160, 400}));
  EXPECT_EQ(Read(u"colour=79\n").columnWidth, (Columns{79, 280, 100, 160, 160, 400}));
  EXPECT_EQ(Read(u"col=80\n").columnWidth, (Columns{80, 280, 100, 160, 160, 400}));
}

TEST(ReadWindowSettings, IgnoresAChoiceOutOfItsRange) {
  const WindowSettings highest = Read(u"sizePreset=4\ntimePreset=4\nsizeUnit=3\nviewMode=2\n");
  EXPECT_EQ(highest.sizePreset, 4);
  EXPECT_EQ(highest.timePreset, 4);
  EXPECT_EQ(highest.sizeUnit, 3);
  EXPECT_EQ(highest.viewMode, 2);
  EXPECT_EQ(Read(u"sizePreset=5\ntimePreset=5\nsizeUnit=4\nviewMode=3\n"), WindowSettings{});
  EXPECT_EQ(Read(u"sizePreset=-1\ntimePreset=-1\nsizeUnit=-1\nviewMode=-1\n"), WindowSettings{});
}

TEST(ReadWindowSettings, ReadsWhatIsNoNumberAsZero) { EXPECT_EQ(Read(u"sizeUnit=MB\n").sizeUnit, 0); }

TEST(ReadWindowSettings, KeepsAnyRangeTextAndAnyDate) {
  const WindowSettings settings = Read(u"sizeRange= 10-20 = x \ntimeStart=20240309\ntimeEnd=-5\n");
  EXPECT_EQ(settings.sizeRange, u"10-20 = x");
  EXPECT_EQ(settings.timeStart, 20'240'309);
  EXPECT_EQ(settings.timeEnd, -5);
}

TEST(ReadWindowSettings, TakesOfARangeTextWhatTheBoxTakes) {
  const std::u16string tail(127 - 3, u'0');
  EXPECT_EQ(Read(u"sizeRange=10-" + tail + u"\n").sizeRange, u"10-" + tail);
  EXPECT_EQ(Read(u"sizeRange=10-" + tail + u"99\n").sizeRange, u"10-" + tail);
}

TEST(ReadWindowSettings, TakesTopbarInAnyCaseAndEveryOtherLayoutForTheSidebar) {
  for (const std::u16string_view value : {u"Topbar", u"topbar", u"TOPBAR"}) {
    EXPECT_FALSE(Read(u"filterLayout=" + std::u16string(value)).sidebarLayout);
  }
  for (const std::u16string_view value : {u"sidebar", u"", u"top bar", u"0"}) {
    EXPECT_TRUE(Read(u"filterLayout=" + std::u16string(value)).sidebarLayout);
  }
}

TEST(ReadWindowSettings, TakesEveryThemeButTheLightOnesForDark) {
  for (const std::u16string_view value : {u"DARK", u"1", u"", u"off", u"night"}) {
    EXPECT_TRUE(Read(u"themeMode=" + std::u16string(value)).darkTheme);
  }
  for (const std::u16string_view value : {u"0", u"Light", u"FALSE"}) {
    EXPECT_FALSE(Read(u"themeMode=dark\nthemeMode=" + std::u16string(value)).darkTheme);
  }
}

TEST(ReadWindowSettings, TakesThreeWordsForAFlagThatIsOff) {
  for (const std::u16string_view value : {u"0", u"False", u"OFF"}) {
    const std::u16string text(value);
    EXPECT_FALSE(Read(u"initialSearchEnabled=" + text).initialSearchEnabled);
    EXPECT_FALSE(Read(u"tableGridLines=" + text).tableGridLines);
    EXPECT_FALSE(Read(u"globalTrimOnToggle=1\nglobalTrimOnToggle=" + text).globalTrimOnToggle);
  }
  for (const std::u16string_view value : {u"", u"1", u"no", u"00", u"on"}) {
    const std::u16string text(value);
    EXPECT_TRUE(Read(u"initialSearchEnabled=0\ninitialSearchEnabled=" + text).initialSearchEnabled);
    EXPECT_TRUE(Read(u"tableGridLines=0\ntableGridLines=" + text).tableGridLines);
    EXPECT_TRUE(Read(u"globalTrimOnToggle=" + text).globalTrimOnToggle);
  }
}

TEST(ReadWindowSettings, ClampsTheLimitsOfAContentSearch) {
  const WindowSettings low = Read(u"contentMaxFileSizeMB=-1\ncontentSearchThreads=-1\n");
  EXPECT_EQ(low.contentMaxFileSizeMB, 0);
  EXPECT_EQ(low.contentSearchThreads, 0);
  const WindowSettings high = Read(u"contentMaxFileSizeMB=1048577\ncontentSearchThreads=65\n");
  EXPECT_EQ(high.contentMaxFileSizeMB, 1'048'576);
  EXPECT_EQ(high.contentSearchThreads, 64);
  const WindowSettings within = Read(u"contentMaxFileSizeMB=1048576\ncontentSearchThreads=64\n");
  EXPECT_EQ(within.contentMaxFileSizeMB, 1'048'576);
  EXPECT_EQ(within.contentSearchThreads, 64);
}

TEST(ReadWindowSettings, ReplacesTheWholeListOfExtensions) {
  EXPECT_EQ(Read(u"contentSearchExts=old\ncontentSearchExts=TXT, .md,,log\n").contentSearchExts,
            (Extensions{u".txt", u".md", u".log"}));
  EXPECT_EQ(Read(u"contentSearchExts=old\ncontentSearchExts=\n").contentSearchExts, Extensions{});
}

TEST(ReadWindowSettings, LosesTheExtensionsBehindTheLimitOfALine) {
  std::u16string line = u"contentSearchExts=";
  while (line.size() + 4 <= 300) line += u"abc,";
  const size_t whole = (255 - std::u16string_view(u"contentSearchExts=").size()) / 4;
  Extensions expected(whole, u".abc");
  expected.push_back(u".a");  // the limit cuts the next one
  EXPECT_EQ(Read(line + u"\nviewMode=1\n").contentSearchExts, expected);
  EXPECT_EQ(Read(line + u"\nviewMode=1\n").viewMode, 1);
}

TEST(ReadWindowSettings, ComparesKeysExactlyAndIgnoresUnknownOnes) {
  EXPECT_EQ(Read(u"ViewMode=1\nviewmode=1\nview=1\n=1\n"), WindowSettings{});
  EXPECT_EQ(ReadSize(u"Width=900\n widths=900\n"), (WindowSize{1100, 700}));
}

TEST(ReadWindowSettings, TakesTheLastOfRepeatedKeys) {
  EXPECT_EQ(Read(u"viewMode=1\nviewMode=2\nviewMode=7\n").viewMode, 2);
}

TEST(WindowSettingsText, HasEveryKeyInItsOrder) {
  EXPECT_EQ(WindowSettingsText(WindowSettings{}, Sized(1100, 700)), kDefaultText);
}

TEST(WindowSettingsText, ScalesBackTo96Dpi) {
  WindowSettings settings;
  settings.columnWidth = {90, 420, 150, 240, 240, 601};
  const std::u16string text = WindowSettingsText(settings, Sized(1500, 900, 144));
  EXPECT_TRUE(text.starts_with(
      u"width=1000\nheight=600\ncol0=60\ncol1=280\ncol2=100\ncol3=160\ncol4=160\ncol5=401\n"));
}

TEST(WindowSettingsText, CountsAScaleOfZeroAs96Dpi) {
  EXPECT_EQ(WindowSettingsText(WindowSettings{}, Sized(1100, 700, 0)), kDefaultText);
}

TEST(WindowSettingsText, WritesNoSizeBelowTheLeast) {
  EXPECT_TRUE(WindowSettingsText({}, Sized(799, 499)).starts_with(u"width=800\nheight=500\n"));
  EXPECT_TRUE(WindowSettingsText({}, Sized(-5, 0)).starts_with(u"width=800\nheight=500\n"));
}

TEST(WindowSettingsText, TakesTheBoxAndThePickersBeforeTheStoredValues) {
  WindowSettings settings;
  settings.sizeRange = u"stored";
  settings.timeStart = 20'200'101;
  settings.timeEnd = 20'201'231;
  WindowPlacement placement = Sized(1100, 700);
  EXPECT_NE(WindowSettingsText(settings, placement)
                .find(u"\nsizeRange=stored\ntimeStart=20200101\ntimeEnd=20201231\n"),
            std::u16string::npos);
  placement.sizeRange = u"";
  placement.timeStart = 20'240'309;
  EXPECT_NE(WindowSettingsText(settings, placement)
                .find(u"\nsizeRange=\ntimeStart=20240309\ntimeEnd=20201231\n"),
            std::u16string::npos);
  placement.timeEnd = 20'240'310;
  EXPECT_NE(WindowSettingsText(settings, placement).find(u"\ntimeStart=20240309\ntimeEnd=20240310\n"),
            std::u16string::npos);
}

TEST(WindowSettingsText, TakesAtMost128CharactersOfTheBox) {
  WindowPlacement placement = Sized(1100, 700);
  placement.sizeRange = std::u16string(200, u'5');
  const std::u16string text = WindowSettingsText({}, placement);
  EXPECT_NE(text.find(u"\nsizeRange=" + std::u16string(128, u'5') + u"\n"), std::u16string::npos);
}

TEST(WindowSettingsText, ReadsBackAsItWas) {
  WindowSettings settings;
  settings.columnWidth = {61, 281, 101, 161, 162, 401};
  settings.sizePreset = 4;
  settings.timePreset = 3;
  settings.sizeUnit = 1;
  settings.sizeRange = u"1-2 \u4F60";
  settings.timeStart = 20'240'101;
  settings.timeEnd = 20'241'231;
  settings.sidebarLayout = true;
  settings.darkTheme = true;
  settings.initialSearchEnabled = false;
  settings.viewMode = 2;
  settings.globalTrimOnToggle = true;
  settings.tableGridLines = false;
  settings.contentMaxFileSizeMB = 0;
  settings.contentSearchThreads = 8;
  settings.contentSearchExts = {u".txt", u".md"};
  const std::u16string text = WindowSettingsText(settings, Sized(1234, 765));
  EXPECT_EQ(Read(text), settings);
  EXPECT_EQ(ReadSize(text), (WindowSize{1234, 765}));
}

TEST(LoadWindowSettings, ScalesTheDefaultsWithoutAFile) {
  const ScratchConfig config;
  CurrentWindowSettings.viewMode = 2;
  EXPECT_EQ(LoadWindowSettings({1100, 700}, 144), (WindowSize{1650, 1050}));
  WindowSettings expected;
  expected.columnWidth = {90, 420, 150, 240, 240, 600};
  EXPECT_EQ(CurrentWindowSettings, expected);
}

TEST(LoadWindowSettings, ScalesWhatTheFileSays) {
  const ScratchConfig config;
  ASSERT_TRUE(WriteTextFile(config.folder.PathOf(u"window.ini"),
                            u"width=1000\nheight=499\ncol2=29\ncol3=101\n"));
  EXPECT_EQ(LoadWindowSettings({1100, 700}, 144), (WindowSize{1500, 1050}));
  EXPECT_EQ(CurrentWindowSettings.columnWidth, (Columns{90, 420, 150, 152, 240, 600}));
}

TEST(LoadWindowSettings, CountsAScaleOfZeroAs96Dpi) {
  const ScratchConfig config;
  EXPECT_EQ(LoadWindowSettings({1100, 700}, 0), (WindowSize{1100, 700}));
  EXPECT_EQ(CurrentWindowSettings, WindowSettings{});
}

TEST(SaveWindowSettings, WritesTheSizeThatTheWindowHasWhenRestored) {
  const ScratchConfig config;
  CurrentWindowSettings = WindowSettings{};
  SaveWindowSettings(Sized(1200, 800));
  const auto text = ReadTextFile(config.folder.PathOf(u"window.ini"));
  ASSERT_TRUE(text.has_value());
  EXPECT_TRUE(text->starts_with(u"width=1200\nheight=800\ncol0=60\n"));
}

TEST(SaveWindowSettings, RewritesTheWholeFileWithAMarkAndWindowsLineEnds) {
  const ScratchConfig config;
  const std::u16string path = config.folder.PathOf(u"window.ini");
  ASSERT_TRUE(WriteFileBytes(path, std::string(5'000, 'x')));
  CurrentWindowSettings = WindowSettings{};
  SaveWindowSettings(Sized(1100, 700));
  EXPECT_EQ(ReadFileBytes(path), "\xEF\xBB\xBF" + EncodeTextLines(kDefaultText));
}

TEST(SaveWindowSettings, DoesNothingWithoutAWindow) {
  const ScratchConfig config;
  SaveWindowSettings(std::nullopt);
  EXPECT_EQ(ReadFileBytes(config.folder.PathOf(u"window.ini")), std::nullopt);
}

TEST(SaveWindowSettings, IsSilentWhereTheDirectoryIsMissing) {
  const ScratchFolder scratch;
  const ScopedEnvironment missing("QUILMARK_CONFIG_DIR", (scratch.HostPath() / "no" / "such").string());
  SaveWindowSettings(Sized(1100, 700));
  EXPECT_TRUE(std::filesystem::is_empty(scratch.HostPath()));
}

}  // namespace
}  // namespace quilmark
