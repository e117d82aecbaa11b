#include "platform/window_post.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

constexpr uint32_t kLongMs = 60'000;  // a limit that only a hanging test reaches
constexpr uint32_t kMessage = 0x8001;

TEST(WindowPost, MessagesArriveWholeAndInOrder) {
  PostQueue queue;
  EXPECT_TRUE(PostIfAlive(queue.Target(), kMessage, 1, -1));
  EXPECT_TRUE(PostIfAlive(queue.Target(), kMessage + 1, UINT64_MAX, INT64_MIN));
  const auto first = queue.Take(0), second = queue.Take(0);
  ASSERT_TRUE(first && second);
  EXPECT_EQ(first->message, kMessage);
  EXPECT_EQ(first->first, 1u);
  EXPECT_EQ(first->second, -1);
  EXPECT_EQ(second->message, kMessage + 1);
  EXPECT_EQ(second->first, UINT64_MAX);
  EXPECT_EQ(second->second, INT64_MIN);
  EXPECT_FALSE(queue.Take(0).has_value());
}

TEST(WindowPost, NobodyTakesNothing) { EXPECT_FALSE(PostIfAlive(nullptr, kMessage, 1, 2)); }

TEST(WindowPost, ADestroyedQueueIsGone) {
  PostTarget target = nullptr;
  {
    const PostQueue queue;
    target = queue.Target();
  }
  const PostQueue other;
  EXPECT_NE(other.Target(), target);
  EXPECT_FALSE(PostIfAlive(target, kMessage, 1, 2));
  EXPECT_FALSE(PostText(target, kMessage, 1, u"text"));
}

TEST(WindowPost, EachQueueHasItsOwnMessages) {
  PostQueue one, two;
  ASSERT_TRUE(PostIfAlive(one.Target(), kMessage, 1, 0));
  EXPECT_FALSE(two.Take(0).has_value());
  EXPECT_TRUE(one.Take(0).has_value());
}

TEST(WindowPost, ATextIsTheReceivers) {
  PostQueue queue;
  std::u16string text = u"status \u0416";
  ASSERT_TRUE(PostText(queue.Target(), kMessage, 7, text));
  text = u"changed";
  const auto message = queue.Take(0);
  ASSERT_TRUE(message.has_value());
  EXPECT_EQ(message->first, 7u);
  const auto taken = TakeText(*message);
  ASSERT_NE(taken, nullptr);
  EXPECT_EQ(*taken, u"status \u0416");
}

TEST(WindowPost, AMessageWithoutATextGivesNone) { EXPECT_EQ(TakeText(PostedMessage{}), nullptr); }

// The leak check of the sanitizer is what would find the text.
TEST(WindowPost, ATextThatNobodyTookEndsWithItsQueue) {
  PostQueue queue;
  EXPECT_TRUE(PostText(queue.Target(), kMessage, 0, u"a text that is too long to be kept in place"));
}

TEST(WindowPost, AClosedQueueGivesWhatItHasAndDoesNotWait) {
  PostQueue queue;
  ASSERT_TRUE(PostIfAlive(queue.Target(), kMessage, 1, 0));
  queue.Close();
  EXPECT_TRUE(PostIfAlive(queue.Target(), kMessage, 2, 0));
  EXPECT_EQ(queue.Take(kLongMs)->first, 1u);
  EXPECT_EQ(queue.Take(kLongMs)->first, 2u);
  EXPECT_FALSE(queue.Take(kLongMs).has_value());
}

}  // namespace
}  // namespace quilmark
