// Functions that not every Windows has, or whose library must come from the system's own folder.
#pragma once

#include <windows.h>

namespace quilmark {

// Searches libraries in the system's folder alone, from here on.
void HardenLibrarySearch();

// Of a library in the system's folder, loaded if need be; null without it.
[[nodiscard]] FARPROC SystemFunction(const wchar_t* library, const char* name);

// The same as a function of its type.
template <typename Function>
[[nodiscard]] Function SystemCall(const wchar_t* library, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(SystemFunction(library, name)));
}

}  // namespace quilmark
