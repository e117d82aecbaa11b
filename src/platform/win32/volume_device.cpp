#include "platform/volume_device.h"

#include <windows.h>

#include <dbt.h>
#include <winioctl.h>

#include <atomic>
#include <memory>
#include <mutex>

#include "platform/byte_source.h"
#include "platform/drive_roots.h"
#include "platform/ntfs/raw_ntfs_device.h"
#include "platform/win32/file_handle.h"
#include "platform/win32/wide.h"
#include "platform/win32/wine_volumes.h"

namespace quilmark {

static_assert(kFsctlGetNtfsVolumeData == FSCTL_GET_NTFS_VOLUME_DATA);
static_assert(kFsctlGetNtfsFileRecord == FSCTL_GET_NTFS_FILE_RECORD);
static_assert(kFsctlEnumUsnData == FSCTL_ENUM_USN_DATA);
static_assert(kFsctlReadUsnJournal == FSCTL_READ_USN_JOURNAL);
static_assert(kFsctlCreateUsnJournal == FSCTL_CREATE_USN_JOURNAL);
static_assert(kFsctlQueryUsnJournal == FSCTL_QUERY_USN_JOURNAL);
static_assert(kFsctlDeleteUsnJournal == FSCTL_DELETE_USN_JOURNAL);

namespace {

struct Win32DeviceNotice : DeviceNotice {
  explicit Win32DeviceNotice(HDEVNOTIFY notice) { id = reinterpret_cast<uintptr_t>(notice); }
  ~Win32DeviceNotice() override { UnregisterDeviceNotification(reinterpret_cast<HDEVNOTIFY>(id)); }
};

class Win32VolumeDevice : public VolumeDevice {
 public:
  Win32VolumeDevice(UniqueFile device, std::u16string path)
      : path_(std::move(path)), device_(std::move(device)) {}
  ~Win32VolumeDevice() override { Close(); }

  Reply Control(uint32_t code, std::span<const std::byte> input, std::span<std::byte> output) override {
    const Reply reply = ControlDevice(code, input, output);
    const bool isMissing = reply.error == ERROR_INVALID_FUNCTION || reply.error == ERROR_NOT_SUPPORTED;
    if (!isMissing || !IsWine()) return reply;
    const auto raw = RawBytes();
    if (raw == nullptr && isClosed_) return {.error = kErrorInvalidHandle};
    return raw != nullptr ? raw->Control(code, input, output) : reply;
  }

  Reply ReadAt(ByteOffset offset, std::span<std::byte> buffer) override {
    OVERLAPPED at{};
    at.Offset = static_cast<DWORD>(offset.value);
    at.OffsetHigh = static_cast<DWORD>(offset.value >> 32);
    return Call([&](DWORD& bytes) {
      return ReadFile(device_.Get(), buffer.data(), static_cast<DWORD>(buffer.size()), &bytes, &at);
    });
  }

  // By the raw bytes alone, where those are read.
  std::optional<FileFacts> ReadFacts(FileReference reference) override {
    const auto raw = raw_.load();
    return raw != nullptr ? raw->ReadFacts(reference) : std::nullopt;
  }

  std::shared_ptr<const DeviceNotice> TellWindow(PostTarget window) override {
    const std::scoped_lock lock(inUse_);
    if (window == nullptr || isClosed_ || !device_) return nullptr;
    DEV_BROADCAST_HANDLE filter = {};
    filter.dbch_size = sizeof filter;
    filter.dbch_devicetype = DBT_DEVTYP_HANDLE;
    filter.dbch_handle = device_.Get();
    const HDEVNOTIFY notice = RegisterDeviceNotificationW(window, &filter, DEVICE_NOTIFY_WINDOW_HANDLE);
    return notice != nullptr ? std::make_shared<Win32DeviceNotice>(notice) : nullptr;
  }

  void Cancel() override {
    if (const auto raw = raw_.load()) raw->Cancel();
    const std::scoped_lock lock(callerLock_);
    CancelCaller();
  }

  // The call in progress may have begun after a cancellation: it is cancelled until it is out. The
  // raw bytes come second, since that call may be about to open them.
  uint32_t Close() override {
    isClosed_ = true;
    while (!inUse_.try_lock()) {
      Cancel();
      Sleep(1);
    }
    const std::lock_guard<std::mutex> lock(inUse_, std::adopt_lock);
    if (const auto raw = raw_.load()) raw->Close();
    if (!device_) return 0;
    return CloseHandle(device_.Release()) ? 0 : GetLastError();
  }

 private:
  Reply ControlDevice(uint32_t code, std::span<const std::byte> input, std::span<std::byte> output) {
    return Call([&](DWORD& bytes) {
      return DeviceIoControl(device_.Get(), code, const_cast<std::byte*>(input.data()),
                             static_cast<DWORD>(input.size()), output.data(),
                             static_cast<DWORD>(output.size()), &bytes, nullptr);
    });
  }

  // The volume by its bytes: a device of Wine over an image has no control codes. Null if it holds no
  // NTFS volume.
  std::shared_ptr<VolumeDevice> RawBytes() {
    const std::scoped_lock lock(inUse_);
    if (isClosed_) return nullptr;
    if (raw_.load() == nullptr) {
      raw_ = std::shared_ptr<VolumeDevice>(OpenRawNtfs(OpenByteSource(path_), &isClosed_));
    }
    return raw_;
  }

  // Runs `call` with the thread known to Cancel.
  template <typename SystemCall>
  Reply Call(SystemCall call) {
    const std::scoped_lock lock(inUse_);
    if (isClosed_ || !device_) return {.error = kErrorInvalidHandle};
    SetCaller(OpenThread(THREAD_TERMINATE, FALSE, GetCurrentThreadId()));
    DWORD bytes = 0;
    const BOOL isDone = call(bytes);
    const DWORD error = isDone ? 0 : GetLastError();
    SetCaller(nullptr);
    return {.error = error, .bytes = error == 0 ? bytes : 0};
  }

  void SetCaller(HANDLE thread) {
    const std::scoped_lock lock(callerLock_);
    caller_.Reset(thread);
  }

  // REQUIRES callerLock_ held
  void CancelCaller() {
    if (!caller_) return;
    CancelSynchronousIo(caller_.Get());
    CancelIoEx(device_.Get(), nullptr);
  }

  std::mutex inUse_;  // held by a call in progress
  std::mutex callerLock_;
  UniqueKernelObject caller_;  // callerLock_; the thread inside a call
  std::atomic<bool> isClosed_ = false;
  std::atomic<std::shared_ptr<VolumeDevice>> raw_;  // written with inUse_ held
  const std::u16string path_;
  UniqueFile device_;
};

UniqueFile OpenDevice(const std::u16string& path, VolumeAccess access) {
  const DWORD wanted = access == VolumeAccess::kReadWrite ? GENERIC_READ | GENERIC_WRITE : GENERIC_READ;
  return UniqueFile(
      CreateFileW(Wide(path), wanted, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

// The raw bytes of a volume are never written.
std::unique_ptr<VolumeDevice> OpenImage(std::u16string_view path, VolumeAccess access, uint32_t& error) {
  error = access == VolumeAccess::kReadWrite ? kErrorWriteProtect : kErrorInvalidFunction;
  if (access == VolumeAccess::kReadWrite) return nullptr;
  auto device = OpenRawNtfs(OpenByteSource(path));
  if (device != nullptr) error = 0;
  return device;
}

}  // namespace

std::unique_ptr<VolumeDevice> OpenVolumeDevice(std::u16string_view drive, VolumeAccess access,
                                               uint32_t& error) {
  const auto root = drive.empty() ? nullptr : SharedRootOf(drive[0]);
  if (root != nullptr) return OpenImage(SystemPathOfRoot(*root), access, error);
  std::u16string path = u"\\\\.\\" + std::u16string(drive);
  UniqueFile device = OpenDevice(path, access);
  error = device ? 0 : GetLastError();
  if (!device) return nullptr;
  return std::make_unique<Win32VolumeDevice>(std::move(device), std::move(path));
}

}  // namespace quilmark
