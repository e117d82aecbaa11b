// How well letters stand out from what lies behind them.
#pragma once

#include "config/palette.h"

namespace quilmark {

// What small letters need to be read with ease.
inline constexpr double kReadableContrast = 4.5;

// 1 (the same) to 21 (black on white), by the relative luminance of WCAG 2.
double ContrastRatio(Color a, Color b);

// The colour nearest to `color`, on its way to black or white, that is readable on `ground`.
Color ReadableOn(Color ground, Color color);

// Letters on a strong ground: black or white, one of which can be read on any.
Color LettersOn(Color ground);

}  // namespace quilmark
