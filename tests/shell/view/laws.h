// What every screen has to obey, as it was drawn on a recording canvas.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "support/recording_canvas.h"

namespace quilmark {

// Each gives what is against it, a line each; empty where nothing is.

// A text has the height of its letters, and begins in its place and on the screen.
std::vector<std::string> TextsOutsideTheirBoxes(const RecordingCanvas& canvas, const TextMeasure& fonts);

std::vector<std::string> TextsOverOthers(const RecordingCanvas& canvas, const TextMeasure& fonts);

// No text stands on an icon, and no icon on a text.
std::vector<std::string> TextsOverIcons(const RecordingCanvas& canvas, const TextMeasure& fonts);

// Colours that are drawn as they were chosen, however well they can be read.
struct FixedPair {
  Color ground = 0, text = 0;
};

// Letters stand out from the last ground that was drawn under them as kReadableContrast has it.
std::vector<std::string> UnreadableTexts(const RecordingCanvas& canvas, const TextMeasure& fonts,
                                         std::span<const FixedPair> fixed);

// How many pixels differ where the same is painted in tiles of some odd size.
size_t PixelsThatTilesChange(const Rect& client, const TextMeasure& fonts,
                             const std::function<void(Canvas&)>& paint);

}  // namespace quilmark
