// Threads that post while others take. Run under ThreadSanitizer as well.
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <thread>
#include <vector>

#include "platform/window_post.h"

namespace quilmark {
namespace {

constexpr uint32_t kLongMs = 60'000;  // a limit that only a hanging test reaches
constexpr uint32_t kMessage = 0x8001;

TEST(WindowPostConcurrency, AWaitingTakeSeesAPostOfAnotherThread) {
  PostQueue queue;
  std::thread poster([target = queue.Target()] { PostIfAlive(target, kMessage, 5, 0); });
  const auto message = queue.Take(kLongMs);
  poster.join();
  ASSERT_TRUE(message.has_value());
  EXPECT_EQ(message->first, 5u);
}

TEST(WindowPostConcurrency, ClosingEndsAWaitingTake) {
  PostQueue queue;
  std::thread closer([&] { queue.Close(); });
  EXPECT_FALSE(queue.Take(kLongMs).has_value());
  closer.join();
}

TEST(WindowPostConcurrency, EachThreadsMessagesKeepTheirOrder) {
  constexpr int kThreads = 4;
  constexpr int64_t kPosts = 1'000;
  PostQueue queue;
  std::vector<std::thread> posters;
  for (uint64_t thread = 0; thread < kThreads; ++thread) {
    posters.emplace_back([thread, target = queue.Target()] {
      for (int64_t i = 0; i < kPosts; ++i) PostIfAlive(target, kMessage, thread, i);
    });
  }
  std::map<uint64_t, int64_t> next;
  for (int64_t taken = 0; taken < kThreads * kPosts; ++taken) {
    const auto message = queue.Take(kLongMs);
    ASSERT_TRUE(message.has_value());
    EXPECT_EQ(message->second, next[message->first]++);
  }
  for (std::thread& poster : posters) poster.join();
}

TEST(WindowPostConcurrency, PostsMeetTheEndOfTheirQueue) {
  for (int round = 0; round < 50; ++round) {
    auto queue = std::make_unique<PostQueue>();
    std::thread poster([target = queue->Target()] {
      while (PostText(target, kMessage, 0, u"a text that is too long to be kept in place")) {
      }
    });
    const auto message = queue->Take(kLongMs);
    EXPECT_NE(TakeText(message.value_or(PostedMessage{})), nullptr);
    queue.reset();
    poster.join();  // ends only because posts to a destroyed queue fail
  }
}

}  // namespace
}  // namespace quilmark
