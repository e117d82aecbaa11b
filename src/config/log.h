// The two logs: metrics in the configuration directory, diagnostics in the temporary one. A line that
// cannot be written is lost. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/clock.h"

namespace quilmark {

// Objects of the graphics system that this process holds.
struct GuiResourceCounts {
  uint32_t gdi = 0;
  uint32_t user = 0;
};

// Sets where LogGdiState has its counts from; null, as at the start, gives 0 and 0.
void InstallGuiResourceCounter(GuiResourceCounts (*counter)());

// What that counter says now.
GuiResourceCounts CountGuiResources();

// Appends a stamped line to "perf_metrics.log".
void LogPerfMetric(std::u16string_view text);

// Appends a stamped line with the counts to "Quilmark_gdi.log".
void LogGdiState(std::u16string_view text);

// Writes "[BackgroundThreadException] " and `what`, or "unknown" for null, by LogGdiState.
void LogBackgroundThreadException(const char* what);

// Makes LogBackgroundThreadException the end of every exception that leaves a job of RunBackground.
void InstallBackgroundExceptionLog();

// The line that LogPerfMetric appends at `time`, with its end.
std::u16string PerfMetricLine(const LocalTime& time, std::u16string_view text);

// The line that LogGdiState appends at `time`, with its end.
std::u16string GdiStateLine(const LocalTime& time, const GuiResourceCounts& counts,
                            std::u16string_view text);

// Where LogGdiState writes: in `tempFolder`, which ends with a backslash, or in the current folder
// (".\") if the system names none or its path has more than 258 units.
std::u16string GdiLogPath(const std::optional<std::u16string>& tempFolder);

}  // namespace quilmark
