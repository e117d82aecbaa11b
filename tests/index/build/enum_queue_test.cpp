#include "index/build/enum_queue.h"

#include <gtest/gtest.h>

#include <future>

namespace quilmark {
namespace {

std::unique_ptr<EnumBuffer> BlockOf(uint32_t bytes) {
  auto buffer = std::make_unique<EnumBuffer>();
  buffer->bytesReturned = bytes;
  return buffer;
}

TEST(EnumQueue, GivesBlocksInTheOrderOfTheirArrival) {
  EnumQueue queue;
  queue.Push(BlockOf(1));
  queue.Push(BlockOf(2));
  queue.Finish();
  EXPECT_EQ(queue.Pop()->bytesReturned, 1u);
  EXPECT_EQ(queue.Pop()->Block().size(), 2u);
  EXPECT_EQ(queue.Pop(), nullptr);
  EXPECT_EQ(queue.Pop(), nullptr) << "however often it is asked";
}

TEST(EnumQueue, DropsWhatNobodyTakesAnyMore) {
  EnumQueue queue;
  queue.Push(BlockOf(1));
  EXPECT_FALSE(queue.IsAbandoned());
  queue.Abandon();
  EXPECT_TRUE(queue.IsAbandoned());
  queue.Push(BlockOf(2));
  queue.Finish();
  EXPECT_EQ(queue.Pop(), nullptr);
}

TEST(EnumQueue, WaitsForABlockAndForTheEnd) {
  EnumQueue queue;
  auto taken = std::async(std::launch::async, [&] {
    uint32_t bytes = 0;
    while (const auto buffer = queue.Pop()) bytes += buffer->bytesReturned;
    return bytes;
  });
  for (uint32_t i = 1; i <= 100; ++i) queue.Push(BlockOf(i));
  queue.Finish();
  EXPECT_EQ(taken.get(), 5'050u);
}

}  // namespace
}  // namespace quilmark
