#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include "platform/published.h"

namespace quilmark {
namespace {

struct Rows {
  std::shared_ptr<const std::vector<uint64_t>> rows = std::make_shared<const std::vector<uint64_t>>();
  uint64_t madeUnder = 0;
};

// Whoever supersedes finds a value of earlier work at most, and no later look finds one that was made
// before.
TEST(PublishedConcurrency, NeverShowsWorkThatWasSuperseded) {
  Published<Rows> results("results");
  std::atomic<bool> stops = false;
  std::vector<std::thread> threads;
  for (int worker = 0; worker < 2; ++worker) {
    threads.emplace_back([&] {
      while (!stops) {
        const Ticket ticket = results.Latest();
        const uint64_t number = ticket.Number();
        Rows made{std::make_shared<const std::vector<uint64_t>>(number % 7, number), number};
        if (results.Publish(ticket, std::move(made))) EXPECT_GE(results.Get().madeUnder, number);
      }
    });
  }
  threads.emplace_back([&] {
    uint64_t last = 0;
    while (!stops) {
      const Rows seen = results.Get();
      EXPECT_GE(seen.madeUnder, last);
      last = seen.madeUnder;
      EXPECT_EQ(seen.rows->size(), seen.madeUnder % 7);
      for (const uint64_t row : *seen.rows) EXPECT_EQ(row, seen.madeUnder);
    }
  });
  for (int i = 0; i < 5'000; ++i) {
    const Ticket ticket = results.Supersede();
    const Rows first = results.Get();
    std::this_thread::yield();
    const Rows second = results.Get();
    if (second.rows != first.rows) EXPECT_GE(second.madeUnder, ticket.Number());
  }
  stops = true;
  for (std::thread& thread : threads) thread.join();
}

}  // namespace
}  // namespace quilmark
