#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "shell/list/icon_cache.h"
#include "shell/list/scripted_icons.h"
#include "support/gate.h"

namespace quilmark {
namespace {

std::u16string PathOf(unsigned file) {
  return u"C:\\" + std::u16string(1, static_cast<char16_t>(0x4E00 + file)) + u".jpg";
}

// Both ask the source, and get the same icon all the same.
TEST(IconCacheConcurrency, TwoThreadsThatLoadOneIconShareIt) {
  ScriptedIcons source;
  IconCache icons(source);
  Door bothAsk;
  std::atomic<int> asking = 0;
  source.whileAsked = [&] {
    if (++asking == 2) bothAsk.Open();
    bothAsk.Pass();
  };
  IconRef first, second;
  std::thread one([&] { first = icons.GetIcon({.path = u"C:\\a.txt"}); });
  std::thread other([&] { second = icons.GetIcon({.path = u"C:\\a.txt"}); });
  one.join();
  other.join();
  EXPECT_NE(first, nullptr);
  EXPECT_EQ(first, second);
  EXPECT_EQ(source.Count("file"), 2u);
  EXPECT_EQ(source.alive, 1);
}

// A slow file keeps nobody else waiting.
TEST(IconCacheConcurrency, AThreadThatLoadsStopsNoOther) {
  ScriptedIcons source;
  IconCache icons(source);
  icons.Prepare();
  icons.GetIcon({.path = u"C:\\kept.txt"});
  Door loaded;
  std::atomic<bool> isAsking = false;
  source.whileAsked = [&] {
    if (isAsking.exchange(true)) return;
    loaded.Pass();
  };
  std::thread slow([&] { icons.GetIcon({.path = u"C:\\slow.jpg", .size = 48, .thumbnail = true}); });
  ASSERT_TRUE(WaitUntil([&] { return isAsking.load(); }));
  EXPECT_TRUE(icons.HasCachedIcon({.path = u"C:\\kept.txt"}));
  EXPECT_NE(icons.GetIcon({.path = u"C:\\other.txt"}), nullptr);
  EXPECT_NE(icons.FolderIcon(16), nullptr);
  icons.TrimGdiIfNeeded();
  loaded.Open();
  slow.join();
}

// The interface thread draws and trims while two jobs load more than there is room for.
TEST(IconCacheConcurrency, IconsComeAndGoWhileTheyAreDrawn) {
  ScriptedIcons source;
  source.decodes = true;
  IconCache icons(source);
  icons.Prepare();
  std::atomic<int> running = 2;
  std::vector<std::thread> jobs;
  for (unsigned job = 0; job < 2; ++job) {
    jobs.emplace_back([&, job] {
      for (unsigned file = 0; file < 3'000; ++file) {
        const std::u16string path = PathOf(file * (job + 1));
        EXPECT_NE(icons.GetIcon({.path = path, .size = 48, .thumbnail = true}), nullptr);
      }
      --running;
    });
  }
  for (unsigned paint = 0; running > 0; ++paint) {
    for (unsigned file = 0; file < 40; ++file) {
      const std::u16string path = PathOf(paint + file);
      const IconRef drawn = icons.ThumbnailOf(path, 48).icon;
      if (drawn != nullptr) EXPECT_EQ(drawn->PlaceIn({0, 0, 48, 48}), (Rect{0, 0, 48, 48}));
      EXPECT_NE(icons.GetIcon({.path = path, .size = 48}), nullptr);
    }
    source.gdiObjects = 7'200;
    icons.TrimGdiIfNeeded();
    if (paint % 50 == 49) {
      icons.Clear();
      icons.Prepare();
    }
  }
  for (std::thread& job : jobs) job.join();
  EXPECT_LE(source.alive, 2 + static_cast<int>(kMostIcons));
  icons.Clear();
  EXPECT_EQ(source.alive, 0);
}

}  // namespace
}  // namespace quilmark
