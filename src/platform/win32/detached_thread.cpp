#include "platform/detached_thread.h"

#include <process.h>
#include <windows.h>

#include <memory>
#include <utility>

#include "platform/utf.h"
#include "platform/win32/file_handle.h"
#include "platform/win32/wide.h"

namespace quilmark {

namespace {

struct Start {
  const char* name;
  std::function<void()> body;
};

void NameThisThread(const char* name) {
  // Absent from early releases of Windows 10, so it is looked up.
  using SetDescription = HRESULT(WINAPI*)(HANDLE, PCWSTR);
  static const auto setDescription = reinterpret_cast<SetDescription>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "SetThreadDescription")));
  if (setDescription != nullptr) setDescription(GetCurrentThread(), Wide(FromUtf8(name)));
}

unsigned __stdcall RunStart(void* argument) {
  const std::unique_ptr<Start> start(static_cast<Start*>(argument));
  NameThisThread(start->name);
  start->body();
  return 0;
}

}  // namespace

// Not std::thread: one that is detached before it has begun may be lost by mingw's pthreads (about 1 in
// 100 on two busy processors).
bool StartDetachedThread(const char* name, std::function<void()> body) {
  auto start = std::make_unique<Start>(Start{name, std::move(body)});
  const uintptr_t handle = _beginthreadex(nullptr, 0, RunStart, start.get(), 0, nullptr);
  const UniqueKernelObject thread(reinterpret_cast<HANDLE>(handle));
  if (!thread) return false;
  static_cast<void>(start.release());  // the thread's from here on
  return true;
}

}  // namespace quilmark
