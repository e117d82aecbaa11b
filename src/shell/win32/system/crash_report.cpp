#include "shell/win32/system/crash_report.h"

#include <windows.h>

#include <dbghelp.h>
#include <psapi.h>

#include <atomic>
#include <cstdlib>
#include <exception>

#include "config/config_directory.h"
#include "config/log.h"
#include "platform/clock.h"
#include "platform/format.h"
#include "platform/known_folders.h"
#include "platform/text_file.h"
#include "platform/utf.h"
#include "platform/win32/guarded_write.h"
#include "platform/win32/system_function.h"
#include "platform/win32/wide.h"

namespace quilmark {

namespace {

constexpr DWORD kTerminated = 0xE000'0001;  // of our own: std::terminate

std::atomic<bool> isReported = false;

using WriteDumpCall = BOOL(WINAPI*)(HANDLE, DWORD, HANDLE, MINIDUMP_TYPE,
                                    PMINIDUMP_EXCEPTION_INFORMATION, PMINIDUMP_USER_STREAM_INFORMATION,
                                    PMINIDUMP_CALLBACK_INFORMATION);

// Asked for once, at the start: a thread that crashes may hold a lock that the answer needs.
struct ReportPlan {
  WritePlan dumps;
  std::u16string dumpFolder;
  WritePlan logs;
  std::u16string logName;
  WriteDumpCall writeDump;
};

ReportPlan MakePlan() {
  const std::u16string dumpFolder = ChooseConfigDirectory(AskConfigPlaces()).path;
  const std::u16string log = GdiLogPath(TempFolder());
  const size_t name = log.rfind(u'\\') + 1;
  return {.dumps = PlanWrites(dumpFolder),
          .dumpFolder = dumpFolder,
          .logs = PlanWrites(log.substr(0, name)),
          .logName = log.substr(name),
          .writeDump = SystemCall<WriteDumpCall>(L"dbghelp.dll", "MiniDumpWriteDump")};
}

// Never freed, since the end of the process may crash too.
const ReportPlan& Plan() {
  static const auto* const plan = new ReportPlan(MakePlan());
  return *plan;
}

// Writes a line of the form that LogGdiState has.
void LogCrash(std::u16string_view text) {
  const UniqueFile file = OpenPlanned(
      Plan().logs, Plan().logName, FILE_APPEND_DATA | FILE_READ_ATTRIBUTES | SYNCHRONIZE, OPEN_ALWAYS);
  LARGE_INTEGER size = {};
  if (!file || !GetFileSizeEx(file.Get(), &size)) return;
  const std::u16string line = GdiStateLine(NowLocal(), CountGuiResources(), text);
  const std::string bytes = size.QuadPart == 0 ? TextFileBytes(line) : EncodeTextLines(line);
  DWORD written = 0;
  WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

std::u16string DumpName() {
  const LocalTime now = NowLocal();
  return FormatText(u"crash-%04d%02d%02d-%02d%02d%02d.dmp", now.year, now.month, now.day, now.hour,
                    now.minute, now.second);
}

bool WriteDump(const std::u16string& name, EXCEPTION_POINTERS* exception) {
  if (Plan().writeDump == nullptr) return false;
  const UniqueFile file = OpenPlanned(Plan().dumps, name, GENERIC_WRITE, CREATE_NEW);
  if (!file) return false;
  MINIDUMP_EXCEPTION_INFORMATION information = {GetCurrentThreadId(), exception, FALSE};
  return Plan().writeDump(GetCurrentProcess(), GetCurrentProcessId(), file.Get(), MiniDumpNormal,
                          &information, nullptr, nullptr) != FALSE;
}

// "Quilmark.exe+0x1234", which a debugger finds again wherever the module was loaded. Taken from the map
// of the memory, since the list of modules is behind the loader's lock.
std::u16string PlaceOf(void* address) {
  MEMORY_BASIC_INFORMATION region = {};
  wchar_t path[MAX_PATH] = {};
  VirtualQuery(address, &region, sizeof region);
  K32GetMappedFileNameW(GetCurrentProcess(), address, path, MAX_PATH);
  std::u16string_view name = FromWide(path);
  name.remove_prefix(name.rfind(u'\\') + 1);
  const auto offset =
      reinterpret_cast<uintptr_t>(address) - reinterpret_cast<uintptr_t>(region.AllocationBase);
  return FormatText(u"%s+0x%llX", name.empty() ? u"?" : name, static_cast<uint64_t>(offset));
}

// The line is written first, so that it is there where the dump fails, or crashes itself.
LONG WINAPI ReportCrash(EXCEPTION_POINTERS* exception) {
  if (isReported.exchange(true)) return EXCEPTION_CONTINUE_SEARCH;
  LogCrash(FormatText(u"[Crash] exception %08X at %s",
                      static_cast<uint32_t>(exception->ExceptionRecord->ExceptionCode),
                      PlaceOf(exception->ExceptionRecord->ExceptionAddress)));
  const std::u16string name = DumpName();
  const bool isWritten = WriteDump(name, exception);
  LogCrash(u"[Crash] dump " + (isWritten ? Plan().dumpFolder + u"\\" + name : u"not written"));
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
  LogCrash(u"[Crash] terminate: " + FromUtf8(ReasonOfTerminate()));
  RaiseException(kTerminated, EXCEPTION_NONCONTINUABLE, 0, nullptr);
  std::abort();
}

}  // namespace

void InstallCrashReport() {
  Plan();
  SetUnhandledExceptionFilter(ReportCrash);
  std::set_terminate(ReportTerminate);
}

}  // namespace quilmark
