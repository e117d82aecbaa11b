#include "platform/window_post.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <memory>

namespace quilmark {
namespace {

constexpr uint32_t kMessage = WM_APP + 1;

struct DestroyWindowOf {
  void operator()(HWND window) const { DestroyWindow(window); }
};
using MessageWindow = std::unique_ptr<std::remove_pointer_t<HWND>, DestroyWindowOf>;

// A window that is never shown and has its messages taken from the queue of this thread.
MessageWindow MakeMessageWindow() {
  return MessageWindow(
      CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr));
}

TEST(Win32WindowPost, AWindowGetsTheMessageInItsQueue) {
  const MessageWindow window = MakeMessageWindow();
  ASSERT_NE(window, nullptr);
  ASSERT_TRUE(PostIfAlive(window.get(), kMessage, UINT64_MAX, -5));
  MSG message;
  ASSERT_TRUE(PeekMessageW(&message, window.get(), kMessage, kMessage, PM_REMOVE));
  EXPECT_EQ(message.wParam, UINT64_MAX);
  EXPECT_EQ(message.lParam, -5);
}

TEST(Win32WindowPost, ATextBelongsToTheWindowOnceItIsPosted) {
  const MessageWindow window = MakeMessageWindow();
  ASSERT_NE(window, nullptr);
  ASSERT_TRUE(PostText(window.get(), kMessage, 3, u"status"));
  MSG message;
  ASSERT_TRUE(PeekMessageW(&message, window.get(), kMessage, kMessage, PM_REMOVE));
  EXPECT_EQ(*TakeText({message.message, message.wParam, message.lParam}), u"status");
}

TEST(Win32WindowPost, ADestroyedWindowIsGone) {
  MessageWindow window = MakeMessageWindow();
  ASSERT_NE(window, nullptr);
  const PostTarget target = window.get();
  window.reset();
  EXPECT_FALSE(PostIfAlive(target, kMessage, 1, 2));
  EXPECT_FALSE(PostText(target, kMessage, 1, u"text"));
}

}  // namespace
}  // namespace quilmark
