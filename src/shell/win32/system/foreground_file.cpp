#include "shell/win32/system/foreground_file.h"

#include <shellapi.h>

#include <optional>
#include <string>
#include <utility>

#include "config/translate.h"
#include "platform/win32/file_handle.h"
#include "platform/win32/wide.h"

namespace quilmark {

namespace {

constexpr size_t kLongestPath = 32'768;

std::optional<std::u16string> ForegroundProgram() {
  DWORD id = 0;
  const HWND foreground = GetForegroundWindow();
  if (foreground == nullptr || GetWindowThreadProcessId(foreground, &id) == 0) return std::nullopt;
  const UniqueKernelObject process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id));
  if (!process) return std::nullopt;
  std::u16string path(kLongestPath, u'\0');
  auto length = static_cast<DWORD>(path.size());
  if (!QueryFullProcessImageNameW(process.Get(), 0, Wide(path.data()), &length)) return std::nullopt;
  path.resize(length);
  return path;
}

// Starts the file manager by its full path: an elevated program must not take one from its current
// folder.
bool ShowInFileManager(const std::u16string& path) {
  wchar_t folder[MAX_PATH] = {};
  const UINT length = GetWindowsDirectoryW(folder, MAX_PATH);
  if (length == 0 || length >= MAX_PATH) return false;
  const std::u16string program = std::u16string(FromWide(folder)) + u"\\explorer.exe";
  const std::u16string arguments = u"/select,\"" + path + u"\"";
  const auto result = reinterpret_cast<INT_PTR>(
      ShellExecuteW(nullptr, L"open", Wide(program), Wide(arguments), folder, SW_SHOWNORMAL));
  return result > 32;
}

}  // namespace

void ShowForegroundFile(HWND owner) {
  const auto path = ForegroundProgram();
  if (path && ShowInFileManager(*path)) return;
  static bool isTelling = false;  // the loop of the box hands out the hotkey too
  if (std::exchange(isTelling, true)) return;
  MessageBoxW(owner,
              Wide(TranslateOr(u"Msg_ForegroundExeOpenFailed",
                               u"Could not get the foreground process path (it may be protected).")),
              Wide(TranslateOr(u"MsgTitle_Information", u"Information")), MB_OK | MB_ICONINFORMATION);
  isTelling = false;
}

}  // namespace quilmark
