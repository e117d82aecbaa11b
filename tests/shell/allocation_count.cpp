#include "shell/allocation_count.h"

namespace quilmark {

namespace {

thread_local bool isCounting = false;
thread_local size_t allocations = 0;

void Note() {
  if (isCounting) ++allocations;
}

}  // namespace

AllocationCount::AllocationCount() {
  allocations = 0;
  isCounting = true;
}

AllocationCount::~AllocationCount() { isCounting = false; }

size_t AllocationCount::Value() const { return allocations; }

}  // namespace quilmark

// The linker leads each operator new of this program here (cmake/tests.cmake); a sanitizer keeps its
// own.
#ifdef _WIN32
#define WRAPPED(name) __wrap_##name##y
#define REAL(name) __real_##name##y
#else
#define WRAPPED(name) __wrap_##name##m
#define REAL(name) __real_##name##m
#endif
extern "C" void* REAL(_Znw)(size_t bytes);
extern "C" void* REAL(_Zna)(size_t bytes);
extern "C" void* WRAPPED(_Znw)(size_t bytes) {
  quilmark::Note();
  return REAL(_Znw)(bytes);
}
extern "C" void* WRAPPED(_Zna)(size_t bytes) {
  quilmark::Note();
  return REAL(_Zna)(bytes);
}
