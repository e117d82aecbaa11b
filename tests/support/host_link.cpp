#include "support/host_link.h"

#ifdef _WIN32

#include <windows.h>

#include <stdexcept>

#include "platform/files.h"
#include "platform/known_folders.h"
#include "platform/win32/file_handle.h"
#include "platform/win32/wide.h"

namespace quilmark {

namespace {

constexpr int kMostWaits = 10'000;  // of a millisecond

// The host's own program, which Wine starts and cannot wait for.
bool StartLinking(const std::u16string& folder) {
  wchar_t command[] = L"ln -sn behind link";
  STARTUPINFOW start = {};
  start.cb = sizeof start;
  PROCESS_INFORMATION process = {};
  if (!CreateProcessW(L"Z:\\bin\\ln", command, nullptr, nullptr, FALSE, 0, nullptr, Wide(folder), &start,
                      &process)) {
    return false;
  }
  const UniqueKernelObject owner(process.hProcess), thread(process.hThread);
  return true;
}

}  // namespace

std::u16string FolderWithLink(const std::u16string& name) {
  const std::u16string folder = TempFolder().value() + name, link = folder + u"\\link";
  if (IsExistingFolder(link)) return folder;
  if (!MakeFolder(folder) || !MakeFolder(folder + u"\\behind") || !StartLinking(folder)) {
    throw std::runtime_error("no link");
  }
  for (int waits = 0; !IsExistingFolder(link); ++waits) {
    if (waits == kMostWaits) throw std::runtime_error("no link came");
    Sleep(1);
  }
  return folder;
}

}  // namespace quilmark

#endif
