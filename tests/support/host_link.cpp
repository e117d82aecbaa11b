#include "support/host_link.h"

#ifdef _WIN32

#include <windows.h>

#include <atomic>
#include <stdexcept>

#include "platform/files.h"
#include "platform/known_folders.h"
#include "platform/win32/file_handle.h"
#include "platform/win32/wide.h"

namespace quilmark {

namespace {

std::atomic<bool> linksAreJunctions = false;
std::atomic<uint32_t> tagOfFiles = 0;

constexpr int kMostWaits = 10'000;  // of a millisecond

// The host's own program, which Wine starts and cannot wait for.
bool StartLinking(const std::u16string& folder, const std::u16string& link,
                  const std::u16string& target) {
  std::u16string command = u"ln -sn " + target + u" " + link;
  STARTUPINFOW start = {};
  start.cb = sizeof start;
  PROCESS_INFORMATION process = {};
  if (!CreateProcessW(L"Z:\\bin\\ln", Wide(command.data()), nullptr, nullptr, FALSE, 0, nullptr,
                      Wide(folder), &start, &process)) {
    return false;
  }
  const UniqueKernelObject owner(process.hProcess), thread(process.hThread);
  return true;
}

}  // namespace

LinksAsJunctions::LinksAsJunctions() { linksAreJunctions = true; }
LinksAsJunctions::~LinksAsJunctions() { linksAreJunctions = false; }
bool LinksAreJunctions() { return linksAreJunctions; }

FilesTagged::FilesTagged(uint32_t tag) { tagOfFiles = tag; }
FilesTagged::~FilesTagged() { tagOfFiles = 0; }
uint32_t TagOfFiles() { return tagOfFiles; }

std::u16string FolderWithLink(const std::u16string& name, const std::u16string& link,
                              const std::u16string& target) {
  const std::u16string folder = TempFolder().value() + name, linkPath = folder + u"\\" + link;
  if (IsExistingFolder(linkPath)) return folder;
  if (!MakeFolder(folder) || !MakeFolder(folder + u"\\behind") || !StartLinking(folder, link, target)) {
    throw std::runtime_error("no link");
  }
  for (int waits = 0; !IsExistingFolder(linkPath); ++waits) {
    if (waits == kMostWaits) throw std::runtime_error("no link came");
    Sleep(1);
  }
  return folder;
}

}  // namespace quilmark

#endif
