#include "shell/app/routing.h"

#include <gtest/gtest.h>

#include "shell/list/scripted_icons.h"
#include "shell/window_harness.h"

namespace quilmark {
namespace {

TEST(ScaleChange, RescalesWhatIsKeptInPixels) {
  WindowHarness harness;
  AppState& app = harness.app;
  WindowSettings settings;
  app.search.rows.scrollY = 44'000'000'000;
  EXPECT_TRUE(TakeScaleChange(app, settings, 144));
  EXPECT_EQ(app.search.rows.scrollY, 66'000'000'000);
  EXPECT_EQ(app.systemDpi, 144u);
  EXPECT_EQ(app.search.sidebarWidth, 300);
  EXPECT_EQ(app.search.headerTop, 135);
  EXPECT_EQ(settings.columnWidth, (std::array<int, 6>{90, 420, 150, 240, 240, 600}));
  EXPECT_TRUE(TakeScaleChange(app, settings, 96));
  EXPECT_EQ(settings.columnWidth, WindowSettings{}.columnWidth);
}

TEST(ScaleChange, HasTheIconsMadeAnew) {
  WindowHarness harness;
  ScriptedIcons source;
  IconCache icons(source);
  icons.Prepare();
  icons.GetIcon({.path = u"a.txt"});
  harness.app.search.icons = &icons;
  WindowSettings settings;
  EXPECT_TRUE(TakeScaleChange(harness.app, settings, 144));
  EXPECT_EQ(source.alive, 2) << "the folders' own";
  EXPECT_FALSE(icons.HasCachedIcon({.path = u"a.txt"}));
}

// As the window does after each paint.
TEST(NotePaint, LetsIconsGoWhereTheSystemRunsShort) {
  WindowHarness harness;
  ScriptedIcons source;
  IconCache icons(source);
  for (char16_t name = 0; name < 1'100; ++name) {
    icons.GetIcon({.path = std::u16string(1, static_cast<char16_t>(0x4E00 + name))});
  }
  harness.app.search.icons = &icons;
  source.gdiObjects = 7'199;
  (void)NotePaint(harness.app, harness.Context(), {}, {});
  EXPECT_EQ(source.alive, 1'100);
  source.gdiObjects = 7'200;
  (void)NotePaint(harness.app, harness.Context(), {}, {});
  EXPECT_EQ(source.alive, 1'024);
}

TEST(ScaleChange, LeavesTheSameScaleAlone) {
  WindowHarness harness;
  AppState& app = harness.app;
  WindowSettings settings;
  EXPECT_FALSE(TakeScaleChange(app, settings, 96));
  EXPECT_FALSE(TakeScaleChange(app, settings, 0));
  app.systemDpi = 0;
  EXPECT_FALSE(TakeScaleChange(app, settings, 96));
  EXPECT_EQ(app.search.sidebarWidth, 200);
}

TEST(ScaleChange, KeepsTheFileOfAWindowOnAScreenOfAnotherScaleThanTheSystem) {
  WindowHarness harness;
  AppState& app = harness.app;
  const WindowSettings stored;
  WindowSettings settings = stored;  // as read at the system's 96
  (void)TakeScaleChange(app, settings, 144);
  const std::u16string saved =
      WindowSettingsText(settings, {.restored = {1650, 1050}, .dpi = static_cast<int>(app.systemDpi)});
  EXPECT_EQ(saved, WindowSettingsText(stored, {.restored = {1100, 700}, .dpi = 96}));
}

}  // namespace
}  // namespace quilmark
