#include "platform/window_post.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <shared_mutex>
#include <utility>

#include "platform/locks.h"
#include "platform/system_windows.h"

namespace quilmark {

namespace {

// Above every window handle, which has 32 significant bits.
constexpr uint64_t kFirstToken = uint64_t{1} << 48;

using OwnedText = std::unique_ptr<std::u16string>;

// What a queue keeps; posters share it, so that a queue may end while one of them holds it.
struct Mailbox {
  struct Item {
    PostedMessage message;
    OwnedText
        text;  // what `second` points at, where it is a text: freed with the item if nobody takes it
  };

  PostTarget token = nullptr;
  std::mutex mutex;
  std::condition_variable changed;
  std::deque<Item> items;  // guarded by `mutex`, and so are the two below
  bool closed = false;     // Take does not wait
  bool gone = false;       // the queue is destroyed
};

using Mailboxes = std::map<PostTarget, std::shared_ptr<Mailbox>>;

struct LiveQueues {
  OrderedLock lock{LockRank::kLeaf, "live post queues"};
  Mailboxes mailboxes;  // guarded by `lock`
  std::atomic<uint64_t> nextToken = kFirstToken;
};

// Never destroyed: detached threads post until the process is gone.
LiveQueues& Queues() {
  static LiveQueues& queues = *new LiveQueues;
  return queues;
}

// Tokens are never used twice: what is not found was never a queue, or is none any more.
bool IsToken(PostTarget target) { return reinterpret_cast<uintptr_t>(target) >= kFirstToken; }

std::shared_ptr<Mailbox> FindMailbox(PostTarget target) {
  LiveQueues& queues = Queues();
  std::shared_lock lock(queues.lock);
  const auto found = queues.mailboxes.find(target);
  return found == queues.mailboxes.end() ? nullptr : found->second;
}

// Takes `text` over if the message was handed over.
bool PostToMailbox(Mailbox& mailbox, const PostedMessage& message, OwnedText& text) {
  std::scoped_lock lock(mailbox.mutex);
  if (mailbox.gone) return false;
  mailbox.items.push_back({message, std::move(text)});
  mailbox.changed.notify_one();
  return true;
}

bool Post(PostTarget target, const PostedMessage& message, OwnedText& text) {
  if (target == nullptr) return false;
  if (IsToken(target)) {
    const std::shared_ptr<Mailbox> mailbox = FindMailbox(target);
    return mailbox != nullptr && PostToMailbox(*mailbox, message, text);
  }
  if (!PostToWindow(target, message)) return false;
  static_cast<void>(text.release());  // the window's from here on
  return true;
}

}  // namespace

struct PostQueue::State : Mailbox {};

bool PostIfAlive(PostTarget target, uint32_t message, uint64_t first, int64_t second) {
  OwnedText none;
  return Post(target, {message, first, second}, none);
}

bool PostText(PostTarget target, uint32_t message, uint64_t first, std::u16string_view text) {
  auto copy = std::make_unique<std::u16string>(text);
  const auto address = static_cast<int64_t>(reinterpret_cast<intptr_t>(copy.get()));
  return Post(target, {message, first, address}, copy);
}

std::unique_ptr<std::u16string> TakeText(const PostedMessage& message) {
  return OwnedText(reinterpret_cast<std::u16string*>(static_cast<intptr_t>(message.second)));
}

PostQueue::PostQueue() : state_(std::make_shared<State>()) {
  LiveQueues& queues = Queues();
  state_->token = reinterpret_cast<PostTarget>(static_cast<uintptr_t>(queues.nextToken.fetch_add(1)));
  Mailboxes entry{{state_->token, state_}};  // allocated before the lock is taken
  std::unique_lock lock(queues.lock);
  queues.mailboxes.merge(entry);
}

PostQueue::~PostQueue() {
  LiveQueues& queues = Queues();
  std::unique_lock registry(queues.lock);
  const auto entry = queues.mailboxes.extract(state_->token);
  registry.unlock();
  std::scoped_lock lock(state_->mutex);
  state_->gone = true;
}

PostTarget PostQueue::Target() const { return state_->token; }

std::optional<PostedMessage> PostQueue::Take(uint32_t timeoutMs) {
  Mailbox& mailbox = *state_;
  std::unique_lock lock(mailbox.mutex);
  const auto ready = [&] { return mailbox.closed || !mailbox.items.empty(); };
  mailbox.changed.wait_for(lock, std::chrono::milliseconds(timeoutMs), ready);
  if (mailbox.items.empty()) return std::nullopt;
  Mailbox::Item item = std::move(mailbox.items.front());
  mailbox.items.pop_front();
  static_cast<void>(item.text.release());  // the receiver's from here on
  return item.message;
}

void PostQueue::Close() {
  std::scoped_lock lock(state_->mutex);
  state_->closed = true;
  state_->changed.notify_all();
}

}  // namespace quilmark
