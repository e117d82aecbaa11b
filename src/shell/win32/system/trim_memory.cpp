#include "shell/win32/system/trim_memory.h"

#include <psapi.h>
#include <tlhelp32.h>

#include <atomic>

#include "platform/background.h"
#include "platform/win32/file_handle.h"
#include "shell/app/trim.h"
#include "shell/app/window_end.h"
#include "shell/win32/system/system_calls.h"

namespace quilmark {

namespace {

std::atomic<uint64_t> lastTrimMs = 0;

void Empty(HANDLE process) {
  SetProcessWorkingSetSize(process, static_cast<SIZE_T>(-1), static_cast<SIZE_T>(-1));
  K32EmptyWorkingSet(process);
}

void TrimProcess(DWORD id) {
  const UniqueKernelObject process(
      OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_SET_QUOTA, FALSE, id));
  if (process) Empty(process.Get());
}

void TrimOthers() {
  EnableProcessPrivilege(L"SeIncreaseQuotaPrivilege");
  const UniqueFile snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  if (!snapshot) return;
  PROCESSENTRY32W entry = {};
  entry.dwSize = sizeof entry;
  const DWORD own = GetCurrentProcessId();
  for (BOOL more = Process32FirstW(snapshot.Get(), &entry); more && !IsEnding();
       more = Process32NextW(snapshot.Get(), &entry)) {
    if (entry.th32ProcessID != 0 && entry.th32ProcessID != own) TrimProcess(entry.th32ProcessID);
  }
}

}  // namespace

void RequestSelfTrim(HWND mainWindow) {
  uint64_t last = lastTrimMs;
  TrimMoment moment{.nowMs = GetTickCount64(), .lastTrimMs = last};
  moment.isForeground = mainWindow != nullptr && GetForegroundWindow() == mainWindow;
  LASTINPUTINFO input = {};
  input.cbSize = sizeof input;
  if (GetLastInputInfo(&input)) moment.lastInputMs = input.dwTime;
  if (!MayTrim(moment) || !lastTrimMs.compare_exchange_strong(last, moment.nowMs)) return;
  Empty(GetCurrentProcess());
}

void RequestGlobalTrimAsync() {
  static SingleJob job;
  job.Start("global_trim_all", TrimOthers);
}

}  // namespace quilmark
