#include "shell/app/volume_notice.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

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

// As ioevent.h writes them.
struct NamedEvent {
  const char* name;
  EventGuid guid;
  VolumeNotice notice;
};
const NamedEvent kNamedEvents[] = {
    {"GUID_IO_VOLUME_LOCK",
     {0x50708874, 0xC9AF, 0x11D1, {0x8F, 0xEF, 0x00, 0xA0, 0xC9, 0xA0, 0x6D, 0x32}},
     VolumeNotice::kWanted},
    {"GUID_IO_VOLUME_LOCK_FAILED",
     {0xAE2EED10, 0x0BA8, 0x11D2, {0x8F, 0xFB, 0x00, 0xA0, 0xC9, 0xA0, 0x6D, 0x32}},
     VolumeNotice::kFree},
    {"GUID_IO_VOLUME_UNLOCK", kUnlock, VolumeNotice::kFree},
    {"GUID_IO_VOLUME_DISMOUNT",
     {0xD16A55E8, 0x1059, 0x11D2, {0x8F, 0xFD, 0x00, 0xA0, 0xC9, 0xA0, 0x6D, 0x32}},
     VolumeNotice::kWanted},
    {"GUID_IO_VOLUME_DISMOUNT_FAILED",
     {0xE3C5B178, 0x105D, 0x11D2, {0x8F, 0xFD, 0x00, 0xA0, 0xC9, 0xA0, 0x6D, 0x32}},
     VolumeNotice::kFree},
    {"GUID_IO_VOLUME_MOUNT",
     {0xB5804878, 0x1A96, 0x11D2, {0x8F, 0xFD, 0x00, 0xA0, 0xC9, 0xA0, 0x6D, 0x32}},
     VolumeNotice::kFree},
};

TEST(VolumeNotice, IsReadFromTheGuidOfACustomEvent) {
  for (const NamedEvent& event : kNamedEvents) {
    EXPECT_EQ(VolumeNoticeOf(kCustomEvent, event.guid), event.notice) << event.name;
  }
  EXPECT_EQ(VolumeNoticeOf(kCustomEvent, {}), std::nullopt);
  EXPECT_EQ(VolumeNoticeOf(0x8001, kUnlock), VolumeNotice::kWanted) << "no custom event: no GUID";
}

}  // namespace
}  // namespace quilmark
