#include "platform/bounded_jobs.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <utility>

#include "platform/background.h"

namespace quilmark {

namespace {

struct Countdown {
  std::mutex mutex;
  std::condition_variable ended;
  size_t running = 0;  // guarded by `mutex`
};

// However the work ends.
struct CountOut {
  Countdown& countdown;
  ~CountOut() {
    const std::scoped_lock lock(countdown.mutex);
    --countdown.running;
    countdown.ended.notify_all();
  }
};

}  // namespace

bool RunWithin(const char* name, std::vector<std::function<void()>> works, uint32_t mostMs) {
  const auto countdown = std::make_shared<Countdown>();
  countdown->running = works.size();
  for (auto& work : works) {
    const std::function<void()> job = [countdown, work = std::move(work)] {
      const CountOut out{*countdown};
      work();
    };
    if (!RunBackground(name, job)) job();
  }
  std::unique_lock lock(countdown->mutex);
  return countdown->ended.wait_for(lock, std::chrono::milliseconds(mostMs),
                                   [&] { return countdown->running == 0; });
}

}  // namespace quilmark
