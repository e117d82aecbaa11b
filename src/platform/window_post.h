// The only way from background code to the interface: ordered messages.
//
// A target is a window of the system, or a PostQueue where there is none (console, tests).
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quilmark {

// A window handle of the system, or PostQueue::Target(). Null means that there is no receiver.
using PostTarget = void*;

// A message on its way, in the terms of the system.
struct PostedMessage {
  uint32_t message = 0;
  uint64_t first = 0;  // wParam
  int64_t second = 0;  // lParam
};

// Hands the message over, in order; never waits. False when the target is null or gone: what `second`
// points at then still belongs to the caller. The result may be dropped where `second` owns nothing. Any
// thread.
bool PostIfAlive(PostTarget target, uint32_t message, uint64_t first, int64_t second);

// Posts a copy of `text` on the heap as `second`; the receiver owns it (TakeText). False, with the copy
// freed, if the post fails; the result may be dropped. Any thread.
bool PostText(PostTarget target, uint32_t message, uint64_t first, std::u16string_view text);

// The text of a message of PostText, which is taken over. REQUIRES such a message, and one call for
// each.
[[nodiscard]] std::unique_ptr<std::u16string> TakeText(const PostedMessage& message);

// A target without a window: keeps what is posted until it is taken. Posts fail once it is destroyed.
// Any thread posts, one takes.
class PostQueue {
 public:
  PostQueue();
  ~PostQueue();
  PostQueue(const PostQueue&) = delete;
  PostQueue& operator=(const PostQueue&) = delete;

  // Where to post; good for PostIfAlive for ever, and a receiver until the queue is destroyed.
  PostTarget Target() const;

  // The oldest message, waiting up to `timeoutMs` for one; empty at the timeout.
  [[nodiscard]] std::optional<PostedMessage> Take(uint32_t timeoutMs);

  // Makes a waiting or later Take return at once when nothing is queued. Any
  // thread, but no signal handler.
  void Close();

 private:
  struct State;
  std::shared_ptr<State> state_;
};

}  // namespace quilmark
