#include "shell/win32/crash_report.h"

#include <windows.h>

#include <dbghelp.h>

#include <atomic>
#include <cstdlib>
#include <exception>

#include "config/config_directory.h"
#include "config/log.h"
#include "platform/clock.h"
#include "platform/format.h"
#include "platform/utf.h"
#include "platform/win32/guarded_write.h"
#include "platform/win32/wide.h"
#include "shell/win32/system_calls.h"

namespace quilmark {

namespace {

constexpr DWORD kTerminated = 0xE000'0001;  // of our own: std::terminate

std::atomic<bool> isReported = false;

// Asked for once, at the start: a thread that crashes may hold what the system needs to answer. Never
// freed, since the end of the process may crash too.
const std::u16string& DumpFolder() {
  static const auto* const folder = new std::u16string(ChooseConfigDirectory(AskConfigPlaces()).path);
  return *folder;
}

std::u16string DumpPath() {
  const LocalTime now = NowLocal();
  return DumpFolder() + FormatText(u"\\crash-%04d%02d%02d-%02d%02d%02d.dmp", now.year, now.month,
                                   now.day, now.hour, now.minute, now.second);
}

bool WriteDump(const std::u16string& path, EXCEPTION_POINTERS* exception) {
  using Write = BOOL(WINAPI*)(HANDLE, DWORD, HANDLE, MINIDUMP_TYPE, PMINIDUMP_EXCEPTION_INFORMATION,
                              PMINIDUMP_USER_STREAM_INFORMATION, PMINIDUMP_CALLBACK_INFORMATION);
  const auto write = SystemCall<Write>(L"dbghelp.dll", "MiniDumpWriteDump");
  const UniqueFile file = OpenForWriting(path, GENERIC_WRITE, CREATE_NEW);
  if (write == nullptr || !file) return false;
  MINIDUMP_EXCEPTION_INFORMATION information = {GetCurrentThreadId(), exception, FALSE};
  return write(GetCurrentProcess(), GetCurrentProcessId(), file.Get(), MiniDumpNormal, &information,
               nullptr, nullptr) != FALSE;
}

// "Quilmark.exe+0x1234": what a debugger finds again, wherever the module was loaded.
std::u16string PlaceOf(const void* address) {
  HMODULE module = nullptr;
  wchar_t path[MAX_PATH] = {};
  GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      static_cast<LPCWSTR>(address), &module);
  GetModuleFileNameW(module, path, MAX_PATH);
  std::u16string_view name = FromWide(path);
  name.remove_prefix(name.rfind(u'\\') + 1);
  const auto offset = reinterpret_cast<uintptr_t>(address) - reinterpret_cast<uintptr_t>(module);
  return FormatText(u"%s+0x%llX", module == nullptr ? u"?" : name, static_cast<uint64_t>(offset));
}

// The line comes first: it is there also where the dump fails, or crashes in its turn.
LONG WINAPI ReportCrash(EXCEPTION_POINTERS* exception) {
  if (isReported.exchange(true)) return EXCEPTION_CONTINUE_SEARCH;
  LogGdiState(FormatText(u"[Crash] exception %08X at %s",
                         static_cast<uint32_t>(exception->ExceptionRecord->ExceptionCode),
                         PlaceOf(exception->ExceptionRecord->ExceptionAddress)));
  const std::u16string path = DumpPath();
  const bool isWritten = WriteDump(path, exception);
  LogGdiState(u"[Crash] dump " + (isWritten ? path : u"not written"));
  return EXCEPTION_EXECUTE_HANDLER;
}

std::string ReasonOfTerminate() {
  const auto exception = std::current_exception();
  if (exception == nullptr) return "no exception";
  try {
    std::rethrow_exception(exception);
  } catch (const std::exception& error) {
    return error.what();
  } catch (...) {
    return "unknown exception";
  }
}

[[noreturn]] void ReportTerminate() {
  LogGdiState(u"[Crash] terminate: " + FromUtf8(ReasonOfTerminate()));
  RaiseException(kTerminated, EXCEPTION_NONCONTINUABLE, 0, nullptr);
  std::abort();
}

}  // namespace

void InstallCrashReport() {
  DumpFolder();
  SetUnhandledExceptionFilter(ReportCrash);
  std::set_terminate(ReportTerminate);
}

}  // namespace quilmark
