#include "config/attr_counters.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

TEST(AttrCounters, GiveTheRatioInPercentWithTwoDigits) {
  AttrCacheCounters counters;
  counters.hits = 9'705;
  counters.misses = 295;
  counters.diskReads = 3;
  counters.hydrateCalls = 4;
  counters.hydrateMicros = 5;
  counters.lockWaitMicros = 6;
  counters.cacheLoadMillis = 7;
  counters.cacheSaveMillis = 8;
  EXPECT_EQ(SummaryMetricText(counters),
            u"summary hit_ratio=97.05% hits=9705 misses=295 disk_reads=3 hydrate_calls=4 hydrate_us=5 "
            u"lock_wait_us=6 cache_load_ms=7 cache_save_ms=8");
}

TEST(AttrCounters, GiveZeroWithoutALookUp) {
  EXPECT_TRUE(SummaryMetricText({}).starts_with(u"summary hit_ratio=0.00% hits=0 misses=0 "));
}

}  // namespace
}  // namespace quilmark
