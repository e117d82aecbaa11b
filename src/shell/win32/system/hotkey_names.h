// Names of keys in the layout of the keyboard.
#pragma once

#include <cstdint>
#include <string>

namespace quilmark {

// The name of a virtual key code; empty where the layout has none. A KeyNamer.
std::u16string KeyName(uint32_t key);

}  // namespace quilmark
