#include "config/log.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <stdexcept>
#include <thread>
#include <vector>

#include "config/scratch_config.h"
#include "platform/background.h"
#include "platform/files.h"

namespace quilmark {
namespace {

constexpr LocalTime kTime = {2024, 3, 9, 7, 5, 2, 41};
const std::string kMark = "\xEF\xBB\xBF";
const std::string kStamp = "[0000-00-00 00:00:00.000] ";

// The bytes of a log with zeros for the digits of each line's stamp; empty without a file.
std::string WithZeroStamps(const std::optional<std::string>& log) {
  std::string bytes = log.value_or("");
  size_t start = bytes.starts_with(kMark) ? kMark.size() : 0;
  while (start < bytes.size()) {
    const size_t end = std::min(start + kStamp.size(), bytes.size());
    std::replace_if(
        bytes.begin() + static_cast<ptrdiff_t>(start), bytes.begin() + static_cast<ptrdiff_t>(end),
        [](unsigned char byte) { return std::isdigit(byte) != 0; }, '0');
    start = std::min(bytes.find('\n', start), bytes.size() - 1) + 1;
  }
  return bytes;
}

// A temporary folder of its own for the diagnostic log.
struct ScratchTemp {
  ScratchFolder folder;
  ScopedEnvironment posix{"TMPDIR", folder.HostPath().string()};
  ScopedEnvironment windows{"TMP", folder.HostPath().string()};

  std::string Log() const { return WithZeroStamps(ReadFileBytes(folder.PathOf(u"Quilmark_gdi.log"))); }
};

TEST(PerfMetricLine, HasAStampInFront) {
  EXPECT_EQ(PerfMetricLine(kTime, u"startup index_ms=7"),
            u"[2024-03-09 07:05:02.041] startup index_ms=7\n");
}

TEST(PerfMetricLine, KeepsPercentSignsOfTheText) {
  EXPECT_EQ(PerfMetricLine(kTime, u"hit_ratio=0.00% %s"),
            u"[2024-03-09 07:05:02.041] hit_ratio=0.00% %s\n");
}

TEST(GdiStateLine, HasBothCounts) {
  EXPECT_EQ(GdiStateLine(kTime, {12, 4'000'000'000}, u"shown"),
            u"[2024-03-09 07:05:02.041] GDI=12 USER=4000000000 shown\n");
}

TEST(GdiLogPath, LiesInTheTemporaryFolder) {
  EXPECT_EQ(GdiLogPath(u"C:\\Temp\\"), u"C:\\Temp\\Quilmark_gdi.log");
}

TEST(GdiLogPath, LiesInTheCurrentFolderWithoutAUsableTemporaryOne) {
  EXPECT_EQ(GdiLogPath(std::nullopt), u".\\Quilmark_gdi.log");
  const std::u16string longest = std::u16string(257, u'x') + u"\\";
  EXPECT_EQ(GdiLogPath(longest), longest + u"Quilmark_gdi.log");
  EXPECT_EQ(GdiLogPath(u"y" + longest), u".\\Quilmark_gdi.log");
}

TEST(LogPerfMetric, AppendsLinesToTheFileInTheConfigurationDirectory) {
  const ScratchConfig config;
  LogPerfMetric(u"first");
  LogPerfMetric(u"second \u00E9");
  EXPECT_EQ(WithZeroStamps(ReadFileBytes(config.folder.PathOf(u"perf_metrics.log"))),
            kMark + kStamp + "first\r\n" + kStamp + "second \xC3\xA9\r\n");
}

TEST(LogPerfMetric, DropsTheLineWhereTheDirectoryIsMissing) {
  const ScratchFolder scratch;
  const ScopedEnvironment missing("QUILMARK_CONFIG_DIR", (scratch.HostPath() / "no" / "such").string());
  LogPerfMetric(u"lost");
  EXPECT_TRUE(std::filesystem::is_empty(scratch.HostPath()));
}

TEST(LogPerfMetric, KeepsLinesOfManyThreadsWhole) {
  const ScratchConfig config;
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([] {
      for (int line = 0; line < 25; ++line) LogPerfMetric(u"line");
    });
  }
  for (std::thread& thread : threads) thread.join();
  std::string expected = kMark;
  for (int line = 0; line < 100; ++line) expected += kStamp + "line\r\n";
  EXPECT_EQ(WithZeroStamps(ReadFileBytes(config.folder.PathOf(u"perf_metrics.log"))), expected);
}

TEST(LogGdiState, WritesZerosWithoutACounter) {
  const ScratchTemp temp;
  LogGdiState(u"started");
  EXPECT_EQ(temp.Log(), kMark + kStamp + "GDI=0 USER=0 started\r\n");
}

TEST(LogGdiState, AsksTheInstalledCounter) {
  const ScratchTemp temp;
  InstallGuiResourceCounter([] { return GuiResourceCounts{31, 17}; });
  LogGdiState(u"shown");
  InstallGuiResourceCounter(nullptr);
  EXPECT_EQ(temp.Log(), kMark + kStamp + "GDI=31 USER=17 shown\r\n");
}

TEST(LogBackgroundThreadException, NamesAMissingTextUnknown) {
  const ScratchTemp temp;
  LogBackgroundThreadException("do_search");
  LogBackgroundThreadException(nullptr);
  EXPECT_EQ(temp.Log(), kMark + kStamp + "GDI=0 USER=0 [BackgroundThreadException] do_search\r\n" +
                            kStamp + "GDI=0 USER=0 [BackgroundThreadException] unknown\r\n");
}

TEST(InstallBackgroundExceptionLog, CatchesWhatLeavesABackgroundJob) {
  const ScratchTemp temp;
  InstallBackgroundExceptionLog();
  ASSERT_TRUE(RunBackground("do_sort", [] { throw std::runtime_error("torn"); }));
  ASSERT_TRUE(WaitForBackgroundJobs(10'000));
  EXPECT_EQ(temp.Log(), kMark + kStamp + "GDI=0 USER=0 [BackgroundThreadException] do_sort: torn\r\n");
  SetBackgroundExceptionLog([](const char*) {});
}

}  // namespace
}  // namespace quilmark
