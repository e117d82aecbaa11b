#include "config/attr_counters.h"

#include "platform/format.h"

namespace quilmark {

AttrCacheCounters& AttrCounters() {
  static AttrCacheCounters counters;
  return counters;
}

std::u16string SummaryMetricText(const AttrCacheCounters& counters) {
  const uint64_t hits = counters.hits, misses = counters.misses;
  const uint64_t total = hits + misses;
  const uint64_t ratio = total == 0 ? 0 : hits * 10'000 / total;
  return FormatText(u"summary hit_ratio=%llu.%02llu%% hits=%llu misses=%llu", ratio / 100, ratio % 100,
                    hits, misses) +
         FormatText(u" disk_reads=%llu hydrate_calls=%llu hydrate_us=%llu", counters.diskReads.load(),
                    counters.hydrateCalls.load(), counters.hydrateMicros.load()) +
         FormatText(u" lock_wait_us=%llu cache_load_ms=%llu cache_save_ms=%llu",
                    counters.lockWaitMicros.load(), counters.cacheLoadMillis.load(),
                    counters.cacheSaveMillis.load());
}

}  // namespace quilmark
