// The system tells of a page that cannot be read by an exception of its own kind, which this compiler
// cannot catch where it happens. A handler that the whole process has sends the thread back to where
// the look began: the way of longjmp, over the frames of the look alone.
#include "platform/win32/guarded_view.h"

#include <windows.h>

#include <atomic>
#include <cstring>

namespace quilmark {

namespace {

// Of the thread that looks; reached by a slot of the system, since what a compiler makes of a variable
// of the thread may take memory at the first use, which no handler may.
struct Guard {
  std::span<const char> view;
  CONTEXT start;
  std::atomic<bool> hasFailed = false;
};

DWORD GuardSlot();

LONG CALLBACK ReturnFromView(EXCEPTION_POINTERS* raised) {
  const EXCEPTION_RECORD& record = *raised->ExceptionRecord;
  if (record.ExceptionCode != static_cast<DWORD>(EXCEPTION_IN_PAGE_ERROR))
    return EXCEPTION_CONTINUE_SEARCH;
  if (record.NumberParameters < 2) return EXCEPTION_CONTINUE_SEARCH;
  auto* const guard = static_cast<Guard*>(TlsGetValue(GuardSlot()));
  if (guard == nullptr) return EXCEPTION_CONTINUE_SEARCH;
  const ULONG_PTR at = record.ExceptionInformation[1];
  const auto first = reinterpret_cast<ULONG_PTR>(guard->view.data());
  if (at < first || at - first >= guard->view.size()) return EXCEPTION_CONTINUE_SEARCH;
  guard->hasFailed = true;
  *raised->ContextRecord = guard->start;
  return EXCEPTION_CONTINUE_EXECUTION;
}

// Made with the first look of the process, and never given back.
DWORD GuardSlot() {
  static const DWORD slot = TlsAlloc();
  return slot;
}

bool InstallHandler() {
  static const bool isInstalled =
      GuardSlot() != TLS_OUT_OF_INDEXES && AddVectoredExceptionHandler(1, ReturnFromView) != nullptr;
  return isInstalled;
}

}  // namespace

// Kept out of its callers: the frame that RtlCaptureContext saw must be there when the handler returns
// to it.
__attribute__((noinline)) bool LookGuarded(std::span<const char> view, void (*look)(void*),
                                           void* subject) {
  if (!InstallHandler()) return false;
  Guard guard{.view = view, .start = {}};
  TlsSetValue(GuardSlot(), &guard);
  RtlCaptureContext(&guard.start);
  if (!guard.hasFailed) look(subject);
  TlsSetValue(GuardSlot(), nullptr);
  return !guard.hasFailed;
}

}  // namespace quilmark
