#include "shell/win32/system/foreground_file.h"

#include <optional>
#include <string>
#include <utility>

#include "config/translate.h"
#include "platform/win32/file_handle.h"
#include "platform/win32/wide.h"
#include "shell/actions/shell_paths.h"
#include "shell/win32/system/file_operations.h"

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

}  // namespace

void ShowForegroundFile(HWND owner) {
  const auto path = ForegroundProgram();
  if (path && StartExplorer(owner, SelectArguments(*path))) return;
  static bool isTelling = false;  // the loop of the box hands out the hotkey too
  if (std::exchange(isTelling, true)) return;
  MessageBoxW(owner,
              Wide(TranslateOr(u"Msg_ForegroundExeOpenFailed",
                               u"Could not get the foreground process path (it may be protected).")),
              Wide(TranslateOr(u"MsgTitle_Information", u"Information")), MB_OK | MB_ICONINFORMATION);
  isTelling = false;
}

}  // namespace quilmark
