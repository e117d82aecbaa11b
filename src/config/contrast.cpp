#include "config/contrast.h"

#include <algorithm>
#include <cmath>

namespace quilmark {

namespace {

double Linear(int channel) {
  const double share = channel / 255.0;
  return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double RelativeLuminance(Color color) {
  return 0.2126 * Linear(RedOf(color)) + 0.7152 * Linear(GreenOf(color)) +
         0.0722 * Linear(BlueOf(color));
}

constexpr Color kBlack = ColorOfHex(0), kWhite = ColorOfHex(0xFFFFFF);

Color Clearer(Color ground, Color a, Color b) {
  return ContrastRatio(ground, a) >= ContrastRatio(ground, b) ? a : b;
}

}  // namespace

double ContrastRatio(Color a, Color b) {
  const double first = RelativeLuminance(a), second = RelativeLuminance(b);
  return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

Color ReadableOn(Color ground, Color color) {
  constexpr int kStep = 5;
  const Color target = Clearer(ground, kBlack, kWhite);
  for (int percent = 0; percent < 100; percent += kStep) {
    const Color mixed = MixColor(target, color, percent);
    if (ContrastRatio(ground, mixed) >= kReadableContrast) return mixed;
  }
  return target;
}

Color LettersOn(Color ground) { return Clearer(ground, kWhite, kBlack); }

}  // namespace quilmark
