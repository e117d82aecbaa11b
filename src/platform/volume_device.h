// A volume opened for reading its records: a device of the system, the raw bytes of an NTFS volume, or a
// script of a test.
//
// Codes and layouts are those of winioctl.h; error codes are those of Windows on every platform.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

#include "platform/byte_offset.h"
#include "platform/file_facts.h"
#include "platform/file_reference.h"
#include "platform/window_post.h"

namespace quilmark {

// Control codes, named after winioctl.h (whose own names are macros).
inline constexpr uint32_t kFsctlGetNtfsVolumeData = 0x0009'0064;
inline constexpr uint32_t kFsctlGetNtfsFileRecord = 0x0009'0068;
inline constexpr uint32_t kFsctlEnumUsnData = 0x0009'00B3;
inline constexpr uint32_t kFsctlReadUsnJournal = 0x0009'00BB;
inline constexpr uint32_t kFsctlCreateUsnJournal = 0x0009'00E7;
inline constexpr uint32_t kFsctlQueryUsnJournal = 0x0009'00F4;
inline constexpr uint32_t kFsctlDeleteUsnJournal = 0x0009'00F8;

// Error codes of Windows that volumes and files answer with.
inline constexpr uint32_t kErrorInvalidFunction = 1;
inline constexpr uint32_t kErrorFileNotFound = 2;
inline constexpr uint32_t kErrorAccessDenied = 5;
inline constexpr uint32_t kErrorInvalidHandle = 6;
inline constexpr uint32_t kErrorWriteProtect = 19;
inline constexpr uint32_t kErrorReadFault = 30;
inline constexpr uint32_t kErrorGeneralFailure = 31;
inline constexpr uint32_t kErrorHandleEof = 38;
inline constexpr uint32_t kErrorInvalidParameter = 87;
inline constexpr uint32_t kErrorAlreadyExists = 183;
inline constexpr uint32_t kErrorMoreData = 234;
inline constexpr uint32_t kErrorOperationAborted = 995;
inline constexpr uint32_t kErrorDeviceNotConnected = 1167;
inline constexpr uint32_t kErrorJournalNotActive = 1179;
inline constexpr uint32_t kErrorJournalEntryDeleted = 1181;

// What a control code writes to. On Windows a buffer that is not aligned to eight bytes may be refused.
template <size_t kBytes>
struct ControlBuffer {
  alignas(8) std::array<std::byte, kBytes> bytes;
};

// While it lives the system tells a window what others want to do with the volume of a device. It
// outlives the device, since whether they did it is told after the device was closed for them; where the
// letter is gone it ends first.
struct DeviceNotice {
  virtual ~DeviceNotice() = default;  // ends it
  uintptr_t id = 0;                   // what the window is told with each event (dbch_hdevnotify)
};

// Any thread may call everything here. Cancel and Close act on a call in progress on another thread; any
// other call may wait for its end.
struct VolumeDevice {
  // How a call ended.
  struct Reply {
    uint32_t error = 0;  // 0, or an error code of Windows
    size_t bytes = 0;    // written to the output
  };
  virtual ~VolumeDevice() = default;  // closes it

  // Runs FSCTL `code`. A short `output` gives error 234, never a write past its end. The reply may be
  // dropped by a caller that asks for the effect afterwards.
  virtual Reply Control(uint32_t code, std::span<const std::byte> input,
                        std::span<std::byte> output) = 0;

  // Reads up to buffer.size() bytes at byte `offset` of the volume; fewer at its end and, with error 0
  // as well, where the raw bytes of a volume cannot be read. A device of Windows wants both in whole
  // sectors.
  [[nodiscard]] virtual Reply ReadAt(ByteOffset offset, std::span<std::byte> buffer) = 0;

  // Size and dates of the file that `reference` names, from the records of the volume. Empty where the
  // device leaves that to the system, which knows the file by its path, and where the records do not
  // tell.
  [[nodiscard]] virtual std::optional<FileFacts> ReadFacts(FileReference /*reference*/) {
    return std::nullopt;
  }

  // Null where the system has no such notices, or the device is closed. `window` must be a window.
  [[nodiscard]] virtual std::shared_ptr<const DeviceNotice> TellWindow(PostTarget /*window*/) {
    return nullptr;
  }

  // Makes a Control in progress, and a ReadAt of a device of Windows, end with error 995. No effect on
  // later calls.
  virtual void Cancel() = 0;

  // Gives a device of Windows back to the system; the source of raw bytes stays open until this object
  // ends. A call in progress is cancelled first; later calls give error 6, or nothing where they give no
  // error code. Returns 0 or an error code, which may be dropped: nobody can use the device any more.
  virtual uint32_t Close() = 0;
};

// What a device is opened for. One of Windows creates a change journal for kReadWrite alone. Raw bytes
// are opened for kRead alone, and create an empty journal in memory.
enum class VolumeAccess { kReadWrite, kRead };

// Opens the volume of `drive` ("X:"): "\\.\X:" on Windows, and the raw bytes where the letter is mapped
// to an NTFS image or a block device. Null, with the reason in `error`, if that fails.
[[nodiscard]] std::unique_ptr<VolumeDevice> OpenVolumeDevice(std::u16string_view drive,
                                                             VolumeAccess access, uint32_t& error);

}  // namespace quilmark
