#include "shell/volume_notice.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

constexpr EventGuid kLock = {0x50708874, 0xC9AF, 0x11D1, {0x8F, 0xEF, 0, 0xA0, 0xC9, 0xA0, 0x6D, 0x32}};
constexpr EventGuid kUnlock = {
    0x9A8C3D68, 0xD0CB, 0x11D1, {0x8F, 0xEF, 0, 0xA0, 0xC9, 0xA0, 0x6D, 0x32}};
constexpr uint32_t kCustomEvent = 0x8006;

TEST(VolumeNotice, IsReadFromTheEventsOfAHandle) {
  EXPECT_EQ(VolumeNoticeOf(0x8001, {}), VolumeNotice::kWanted);
  EXPECT_EQ(VolumeNoticeOf(0x8002, {}), VolumeNotice::kFree);
  EXPECT_EQ(VolumeNoticeOf(0x8003, {}), VolumeNotice::kWanted);
  EXPECT_EQ(VolumeNoticeOf(0x8004, {}), VolumeNotice::kGone);
  EXPECT_EQ(VolumeNoticeOf(0x8000, {}), std::nullopt) << "an arrival is told by its letters";
}

TEST(VolumeNotice, IsReadFromTheGuidOfACustomEvent) {
  EXPECT_EQ(VolumeNoticeOf(kCustomEvent, kLock), VolumeNotice::kWanted);
  EXPECT_EQ(VolumeNoticeOf(kCustomEvent, kUnlock), VolumeNotice::kFree);
  EXPECT_EQ(VolumeNoticeOf(kCustomEvent, {}), std::nullopt);
  EXPECT_EQ(VolumeNoticeOf(0x8001, kUnlock), VolumeNotice::kWanted) << "no custom event: no GUID";
}

}  // namespace
}  // namespace quilmark
