// Lengths that are given at 96 dpi.
#pragma once

#include <cstdint>

namespace quilmark {

// Pixels at `dpi` for `n` pixels at 96 dpi, rounded to the nearest. A dpi of 0 counts as 96.
int ScaleFor(uint32_t dpi, int n);

}  // namespace quilmark
