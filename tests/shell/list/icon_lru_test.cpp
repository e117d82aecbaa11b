#include "shell/list/icon_lru.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <list>
#include <random>

namespace quilmark {
namespace {

IconRef NewIcon() { return std::make_shared<const IconImage>(); }

TEST(IconLru, GivesUpWhatWasWantedLongestAgo) {
  IconLru icons(3);
  const IconRef first = NewIcon(), second = NewIcon();
  EXPECT_EQ(icons.Insert(1, first), nullptr);
  EXPECT_EQ(icons.Insert(2, second), nullptr);
  EXPECT_EQ(icons.Insert(3, NewIcon()), nullptr);
  EXPECT_EQ(icons.Find(1), first);
  EXPECT_EQ(icons.Insert(4, NewIcon()), second);
  EXPECT_EQ(icons.Find(2), nullptr);
  EXPECT_EQ(icons.Size(), 3u);
}

TEST(IconLru, KeepsNoReferenceToWhatItGaveUp) {
  IconLru icons(1);
  const IconRef first = NewIcon();
  EXPECT_EQ(icons.Insert(1, first), nullptr);
  EXPECT_EQ(icons.Insert(2, NewIcon()), first);
  EXPECT_EQ(first.use_count(), 1);
  EXPECT_EQ(icons.ShrinkTo(0).size(), 1u);
  EXPECT_EQ(icons.Size(), 0u);
}

TEST(IconLru, ShrinksFromTheOldestOn) {
  IconLru icons(10);
  for (uint64_t key = 1; key <= 10; ++key) EXPECT_EQ(icons.Insert(key, NewIcon()), nullptr);
  EXPECT_EQ(icons.ShrinkTo(20).size(), 0u);
  EXPECT_NE(icons.Find(1), nullptr);
  EXPECT_EQ(icons.ShrinkTo(4).size(), 6u);
  for (const uint64_t key : {1u, 8u, 9u, 10u}) EXPECT_NE(icons.Find(key), nullptr) << key;
  EXPECT_EQ(icons.Find(7), nullptr);
}

// The same as a plain list of keys, most recent first.
TEST(IconLru, EqualsAListThroughAnyCalls) {
  std::mt19937 random(7);
  IconLru icons(16);
  std::list<uint64_t> keys;
  for (int step = 0; step < 20'000; ++step) {
    const uint64_t key = random() % 40;
    const auto kept = std::find(keys.begin(), keys.end(), key);
    ASSERT_EQ(icons.Find(key) != nullptr, kept != keys.end());
    if (kept != keys.end()) {
      keys.splice(keys.begin(), keys, kept);
    } else {
      const bool isFull = keys.size() == 16;
      ASSERT_EQ(icons.Insert(key, NewIcon()) != nullptr, isFull);
      if (isFull) keys.pop_back();
      keys.push_front(key);
    }
    if (step % 997 == 0) {
      ASSERT_EQ(icons.ShrinkTo(5).size(), std::max<size_t>(keys.size(), 5) - 5);
      keys.resize(std::min<size_t>(keys.size(), 5));
    }
    ASSERT_EQ(icons.Size(), keys.size());
  }
}

}  // namespace
}  // namespace quilmark
