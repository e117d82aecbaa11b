// The window's size in its settings file, while the frame is dragged and after it.
#include "shell/app/frame_drag.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "config/config_directory.h"
#include "platform/files.h"
#include "shell/window_harness.h"
#include "support/system_faults.h"

namespace quilmark {
namespace {

class FrameDrag : public testing::Test {
 protected:
  void ResizeTo(int width) {
    harness_.window.size = {width, 700};
    SaveWindowSize(harness_.app, harness_.window);
  }
  static bool IsSaved(int width) {
    const auto bytes = ReadFileBytes(ConfigPath(u"window.ini"));
    return bytes && bytes->find("width=" + std::to_string(width) + "\r\n") != std::string::npos;
  }
  static ptrdiff_t Flushes(const SystemFaults& calls) {
    const auto names = calls.Calls();
    return std::count_if(names.begin(), names.end(),
                         [](const auto& name) { return name == "fsync" || name == "FlushFileBuffers"; });
  }

  WindowHarness harness_;
};

TEST_F(FrameDrag, SavesEachSizeAndWaitsForTheDiskAtItsEnd) {
  const SystemFaults calls(FaultKind::kOnce);
  OnFrameHeld(harness_.app);
  for (int width = 900; width < 960; ++width) {
    ResizeTo(width);
    ASSERT_TRUE(IsSaved(width));
  }
  EXPECT_EQ(Flushes(calls), 0);

  OnFrameReleased(harness_.app, harness_.window);
  EXPECT_EQ(Flushes(calls), 1);
  EXPECT_TRUE(IsSaved(959));
}

TEST_F(FrameDrag, OfTheTitleBarWritesNothing) {
  ResizeTo(900);
  const SystemFaults calls(FaultKind::kOnce);
  OnFrameHeld(harness_.app);
  OnFrameReleased(harness_.app, harness_.window);
  EXPECT_EQ(Flushes(calls), 0);
  EXPECT_TRUE(IsSaved(900));
}

TEST_F(FrameDrag, ThatWasNotBegunEndsNothing) {
  OnFrameReleased(harness_.app, harness_.window);
  EXPECT_FALSE(ReadFileBytes(ConfigPath(u"window.ini")));
}

TEST_F(FrameDrag, LeavesEverySizeElseOnTheDisk) {
  OnFrameHeld(harness_.app);
  ResizeTo(900);
  OnFrameReleased(harness_.app, harness_.window);
  const SystemFaults calls(FaultKind::kOnce);
  ResizeTo(1200);  // maximised, for one
  EXPECT_EQ(Flushes(calls), 1);
  EXPECT_TRUE(IsSaved(1200));
}

}  // namespace
}  // namespace quilmark
