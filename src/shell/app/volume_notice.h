// What the system tells of a volume whose device somebody holds open.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace quilmark {

// What has become of the volume.
enum class VolumeNotice {
  kWanted,  // somebody wants to remove, lock or dismount it
  kFree,    // that has failed, or is over
  kGone,    // it was removed
};

// A GUID field by field: Data1, Data2, Data3, and the bytes of Data4.
struct EventGuid {
  uint32_t first = 0;
  uint16_t second = 0, third = 0;
  std::array<uint8_t, 8> last = {};

  bool operator==(const EventGuid&) const = default;
};

// The meaning of an event of WM_DEVICECHANGE (dbt.h) for a handle; `custom` says which one a custom
// event is (ioevent.h). Empty for others.
std::optional<VolumeNotice> VolumeNoticeOf(uint32_t event, const EventGuid& custom);

}  // namespace quilmark
