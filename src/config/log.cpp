#include "config/log.h"

#include <atomic>
#include <mutex>

#include "config/config_directory.h"
#include "platform/background.h"
#include "platform/format.h"
#include "platform/known_folders.h"
#include "platform/text_file.h"
#include "platform/utf.h"

namespace quilmark {

namespace {

// Lengths from here on leave no room for the terminator in the buffer of Windows' answer.
constexpr size_t kTooLongForTemp = 259;

std::atomic<GuiResourceCounts (*)()> guiResourceCounter = nullptr;

std::u16string Stamp(const LocalTime& time) {
  return FormatText(u"[%04u-%02u-%02u %02u:%02u:%02u.%03u] ", time.year, time.month, time.day, time.hour,
                    time.minute, time.second, time.millisecond);
}

}  // namespace

void InstallGuiResourceCounter(GuiResourceCounts (*counter)()) { guiResourceCounter = counter; }

GuiResourceCounts CountGuiResources() {
  const auto counter = guiResourceCounter.load();
  return counter == nullptr ? GuiResourceCounts{} : counter();
}

std::u16string PerfMetricLine(const LocalTime& time, std::u16string_view text) {
  return Stamp(time) + FormatText(u"%s\n", text);
}

std::u16string GdiStateLine(const LocalTime& time, const GuiResourceCounts& counts,
                            std::u16string_view text) {
  return Stamp(time) + FormatText(u"GDI=%lu USER=%lu %s\n", counts.gdi, counts.user, text);
}

std::u16string GdiLogPath(const std::optional<std::u16string>& tempFolder) {
  const bool isUsable = tempFolder && tempFolder->size() < kTooLongForTemp;
  return (isUsable ? *tempFolder : u".\\") + u"Quilmark_gdi.log";
}

void LogPerfMetric(std::u16string_view text) {
  // Lines of two threads stay whole and in order. Taken over the writing, hence no lock of the order.
  static std::mutex mutex;
  const std::u16string path = ConfigPath(u"perf_metrics.log");
  const std::scoped_lock lock(mutex);
  AppendTextFile(path, PerfMetricLine(NowLocal(), text));
}

void LogGdiState(std::u16string_view text) {
  AppendTextFile(GdiLogPath(TempFolder()), GdiStateLine(NowLocal(), CountGuiResources(), text));
}

void LogBackgroundThreadException(const char* what) {
  LogGdiState(u"[BackgroundThreadException] " + FromUtf8(what == nullptr ? "unknown" : what));
}

void InstallBackgroundExceptionLog() {
  SetBackgroundExceptionLog([](const char* what) { LogBackgroundThreadException(what); });
}

}  // namespace quilmark
