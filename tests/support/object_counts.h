// What this process holds of the system. Windows alone.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>

namespace quilmark {

// Wine counts no objects for GetGuiResources. The table of them lies in the process: 24 bytes an entry,
// the byte at 14 is the kind, 0 for a free one.
inline int64_t CountGdiObjects() {
  constexpr size_t kTablePointer = 0xF8, kEntries = 16'384, kEntrySize = 24, kKind = 14;
  const std::byte* peb = nullptr;
  asm("movq %%gs:0x60, %0" : "=r"(peb));
  const std::byte* const table = *reinterpret_cast<std::byte* const*>(peb + kTablePointer);
  int64_t count = 0;
  for (size_t entry = 0; entry < kEntries; ++entry) {
    count += table[entry * kEntrySize + kKind] != std::byte{0} ? 1 : 0;
  }
  return count;
}

// Where the system does not count them, the lowest free one stands for their number.
inline int64_t CountHandles() {
  DWORD count = 0;
  if (GetProcessHandleCount(GetCurrentProcess(), &count) && count != 0) return count;
  const HANDLE lowestFree = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  CloseHandle(lowestFree);
  return reinterpret_cast<intptr_t>(lowestFree) / 4;
}

}  // namespace quilmark
