#include "canvas/scale.h"

#include "platform/mul_div.h"

namespace quilmark {

int ScaleFor(uint32_t dpi, int n) { return MulDiv(n, dpi == 0 ? 96 : static_cast<int>(dpi), 96); }

}  // namespace quilmark
