// Names of keys in the layout of the keyboard.
#pragma once

#include <cstdint>
#include <string>

namespace quilmark {

std::u16string KeyName(uint32_t key);

}  // namespace quilmark
