#include "shell/win32/system/hotkey_names.h"

#include <windows.h>

#include "platform/win32/wide.h"

namespace quilmark {

std::u16string KeyName(uint32_t key) {
  const UINT scanCode = MapVirtualKeyW(key, MAPVK_VK_TO_VSC);
  wchar_t name[64] = {};
  const int length = GetKeyNameTextW(static_cast<LONG>(scanCode << 16), name, 64);
  return length > 0 ? std::u16string(FromWide(name), static_cast<size_t>(length)) : std::u16string();
}

}  // namespace quilmark
