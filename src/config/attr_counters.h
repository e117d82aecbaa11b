// What the attribute cache did in this run, for the summary in the metrics log.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

namespace quilmark {

// Counts since the program began, and the time that went into them. Any thread.
struct AttrCacheCounters {
  std::atomic<uint64_t> hits = 0, misses = 0, diskReads = 0, hydrateCalls = 0, hydrateMicros = 0,
                        lockWaitMicros = 0, cacheLoadMillis = 0, cacheSaveMillis = 0;
};

// Those of this process.
AttrCacheCounters& AttrCounters();

// "summary hit_ratio=97.05% hits=... misses=... ...": the line of the end of a run.
std::u16string SummaryMetricText(const AttrCacheCounters& counters);

}  // namespace quilmark
