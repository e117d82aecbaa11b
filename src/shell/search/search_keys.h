// Keys of the search box. Interface thread.
#pragma once

#include <cstdint>
#include <string>

#include "shell/view/window_port.h"

namespace quilmark {

inline constexpr uint32_t kKeyEnter = 13, kKeyEscape = 27;  // virtual key codes

// Enter searches at once; Escape ends a content search. False for any other key: the edit takes it.
bool TakeSearchKey(WindowPort& window, uint32_t key, std::u16string text);

}  // namespace quilmark
