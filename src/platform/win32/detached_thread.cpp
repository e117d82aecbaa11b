#include "platform/detached_thread.h"

#include <process.h>
#include <windows.h>

#include <memory>
#include <utility>

namespace quilmark {

namespace {

using Body = std::function<void()>;

unsigned __stdcall RunBody(void* owned) {
  const std::unique_ptr<Body> body(static_cast<Body*>(owned));
  (*body)();
  return 0;
}

}  // namespace

// Not std::thread: a std::thread of mingw-w64 that is detached before it has begun may never begin
// (about one of a hundred on a busy machine).
bool StartDetachedThread(std::function<void()> body) {
  auto owned = std::make_unique<Body>(std::move(body));
  const auto thread =
      reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, RunBody, owned.get(), 0, nullptr));
  if (thread == nullptr) return false;
  static_cast<void>(owned.release());  // the thread's
  CloseHandle(thread);
  return true;
}

}  // namespace quilmark
