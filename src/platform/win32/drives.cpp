#include <windows.h>

#include "platform/drive_roots.h"
#include "platform/text.h"
#include "platform/win32/file_handle.h"
#include "platform/win32/wide.h"
#include "platform/win32/wine_volumes.h"

namespace quilmark {

namespace {

constexpr std::u16string_view kMappedFolder = u"folder";
constexpr std::u16string_view kWineFolder = u"wine";

// Keeps the system from asking the user for a medium, in this thread.
class NoMediumPrompt {
 public:
  NoMediumPrompt() { SetThreadErrorMode(SEM_FAILCRITICALERRORS, &former_); }
  ~NoMediumPrompt() { SetThreadErrorMode(former_, nullptr); }
  NoMediumPrompt(const NoMediumPrompt&) = delete;
  NoMediumPrompt& operator=(const NoMediumPrompt&) = delete;

 private:
  DWORD former_ = 0;
};

struct VolumeTexts {
  wchar_t label[MAX_PATH + 1] = {};
  wchar_t fileSystem[MAX_PATH + 1] = {};
  DWORD serial = 0;
};

// By name, and by a handle where that fails: a volume may be readable through its folders alone.
bool ReadVolume(const std::u16string& root, VolumeTexts& texts) {
  if (GetVolumeInformationW(Wide(root), texts.label, MAX_PATH + 1, &texts.serial, nullptr, nullptr,
                            texts.fileSystem, MAX_PATH + 1)) {
    return true;
  }
  const UniqueFile folder = OpenFolder(root);
  return folder && GetVolumeInformationByHandleW(folder.Get(), texts.label, MAX_PATH + 1, &texts.serial,
                                                 nullptr, nullptr, texts.fileSystem, MAX_PATH + 1);
}

// A letter that another program has taken leads to a device of a long name at most.
std::u16string DeviceOf(char16_t letter) {
  const wchar_t drive[] = {static_cast<wchar_t>(letter), L':', L'\0'};
  wchar_t device[1'024] = {};
  return QueryDosDeviceW(drive, device, 1'024) != 0 ? std::u16string(FromWide(device))
                                                    : std::u16string();
}

}  // namespace

uint32_t SystemDriveMask() { return GetLogicalDrives(); }

uint32_t AnsweringSystemDriveMask() {
  const NoMediumPrompt noPrompt;
  uint32_t mask = 0;
  for (unsigned i = 0; i < 26; ++i) {
    const wchar_t root[] = {static_cast<wchar_t>(L'A' + i), L':', L'\\', L'\0'};
    if (GetFileAttributesW(root) != INVALID_FILE_ATTRIBUTES) mask |= uint32_t{1} << i;
  }
  return mask;
}

bool HasSystemDriveRoot(char16_t letter) {
  const wchar_t root[] = {static_cast<wchar_t>(letter), L':', L'\\', L'\0'};
  return GetDriveTypeW(root) > DRIVE_NO_ROOT_DIR;
}

std::optional<VolumeInfo> VolumeInfoOfSystemDrive(char16_t letter) {
  const NoMediumPrompt noPrompt;
  VolumeTexts texts;
  const std::u16string root = {letter, u':', u'\\'};
  if (!ReadVolume(root, texts)) return std::nullopt;
  const std::u16string device = DeviceOf(letter);
  const DriveTarget target{.isRemote = GetDriveTypeW(Wide(root)) == DRIVE_REMOTE, .device = device};
  const bool isWalked = IsWine() && RecordSourceOf(letter) == RecordSource::kNone;
  return VolumeInfo{.fileSystem = std::u16string(
                        isWalked ? kWineFolder : FileSystemToRead(FromWide(texts.fileSystem), target)),
                    .label = FromWide(texts.label),
                    .serial = static_cast<uint32_t>(texts.serial)};
}

std::optional<VolumeInfo> VolumeInfoOfMappedFolder(std::u16string_view root) {
  const NoMediumPrompt noPrompt;
  const UniqueFile folder = OpenFolder(SystemPathOfRoot(root));
  BY_HANDLE_FILE_INFORMATION status;
  if (!folder || !GetFileInformationByHandle(folder.Get(), &status)) return std::nullopt;
  if ((status.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return std::nullopt;
  const uint64_t index = (uint64_t{status.nFileIndexHigh} << 32) | status.nFileIndexLow;
  return VolumeInfo{.fileSystem = std::u16string(kMappedFolder),
                    .label = {},
                    .serial = SerialOfFolder(status.dwVolumeSerialNumber, index)};
}

std::u16string SystemPathOfRoot(std::u16string_view root) {
  return (IsDrivePath(root) ? u"\\\\?\\" : u"") + std::u16string(root);
}

bool IsHostPathPrefix(std::u16string_view prefix, std::u16string_view path) {
  return EqualNoCase(prefix, path.substr(0, prefix.size()));
}

}  // namespace quilmark
