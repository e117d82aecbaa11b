#include "platform/win32/wine_volumes.h"

#include <windows.h>
#include <winioctl.h>

#include <array>

#include "platform/byte_source.h"
#include "platform/ntfs/boot_sector.h"
#include "platform/win32/file_handle.h"

namespace quilmark {

namespace {

std::u16string DevicePathOf(char16_t letter) { return u"\\\\.\\" + std::u16string({letter, u':'}); }

bool AnswersJournalCodes(char16_t letter) {
  const UniqueFile device = OpenPath(DevicePathOf(letter), GENERIC_READ, OPEN_EXISTING);
  if (!device) return false;
  std::array<std::byte, 56> data;
  DWORD bytes = 0;
  if (DeviceIoControl(device.Get(), FSCTL_QUERY_USN_JOURNAL, nullptr, 0, data.data(), data.size(),
                      &bytes, nullptr)) {
    return true;
  }
  const DWORD error = GetLastError();
  return error != ERROR_INVALID_FUNCTION && error != ERROR_NOT_SUPPORTED;
}

bool HoldsNtfs(char16_t letter) {
  const auto source = OpenByteSource(DevicePathOf(letter));
  std::array<std::byte, kBootSectorBytes> sector;
  return source != nullptr && source->ReadAt(ByteOffset(0), sector) == sector.size() &&
         ParseBootSector(sector).has_value();
}

}  // namespace

bool IsWine() {
  static const bool isWine =
      GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
  return isWine;
}

RecordSource RecordSourceOf(char16_t letter) {
  if (AnswersJournalCodes(letter)) return RecordSource::kDevice;
  return HoldsNtfs(letter) ? RecordSource::kRawBytes : RecordSource::kNone;
}

}  // namespace quilmark
