#include "platform/system_windows.h"

#include <windows.h>

namespace quilmark {

bool PostToWindow(PostTarget window, const PostedMessage& message) {
  const auto handle = static_cast<HWND>(window);
  return IsWindow(handle) && PostMessageW(handle, message.message, static_cast<WPARAM>(message.first),
                                          static_cast<LPARAM>(message.second));
}

}  // namespace quilmark
