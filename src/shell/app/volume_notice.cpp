#include "shell/app/volume_notice.h"

namespace quilmark {

namespace {

// DBT_DEVICEQUERYREMOVE and those behind it.
constexpr uint32_t kQueryRemove = 32769, kQueryRemoveFailed = 32770, kRemovePending = 32771,
                   kRemoveComplete = 32772, kCustomEvent = 32774;

struct CustomEvent {
  EventGuid guid;
  VolumeNotice notice;
};
constexpr CustomEvent kCustomEvents[] = {
    // GUID_IO_VOLUME_LOCK, ..._LOCK_FAILED, ..._UNLOCK
    {{0x50708874, 0xC9AF, 0x11D1, {0x8F, 0xEF, 0x00, 0xA0, 0xC9, 0xA0, 0x6D, 0x32}},
     VolumeNotice::kWanted},
    {{0xAE2EED10, 0x0BA8, 0x11D2, {0x8F, 0xFB, 0x00, 0xA0, 0xC9, 0xA0, 0x6D, 0x32}},
     VolumeNotice::kFree},
    {{0x9A8C3D68, 0xD0CB, 0x11D1, {0x8F, 0xEF, 0x00, 0xA0, 0xC9, 0xA0, 0x6D, 0x32}},
     VolumeNotice::kFree},
    // GUID_IO_VOLUME_DISMOUNT, ..._DISMOUNT_FAILED, ..._MOUNT
    {{0xD16A55E8, 0x1059, 0x11D2, {0x8F, 0xFD, 0x00, 0xA0, 0xC9, 0xA0, 0x6D, 0x32}},
     VolumeNotice::kWanted},
    {{0xE3C5B178, 0x105D, 0x11D2, {0x8F, 0xFD, 0x00, 0xA0, 0xC9, 0xA0, 0x6D, 0x32}},
     VolumeNotice::kFree},
    {{0xB5804878, 0x1A96, 0x11D2, {0x8F, 0xFD, 0x00, 0xA0, 0xC9, 0xA0, 0x6D, 0x32}},
     VolumeNotice::kFree},
};

}  // namespace

std::optional<VolumeNotice> VolumeNoticeOf(uint32_t event, const EventGuid& custom) {
  switch (event) {
    case kQueryRemove:
    case kRemovePending:
      return VolumeNotice::kWanted;
    case kQueryRemoveFailed:
      return VolumeNotice::kFree;
    case kRemoveComplete:
      return VolumeNotice::kGone;
    case kCustomEvent:
      for (const CustomEvent& known : kCustomEvents) {
        if (known.guid == custom) return known.notice;
      }
      return std::nullopt;
    default:
      return std::nullopt;
  }
}

}  // namespace quilmark
