#include "shell/view/laws.h"

#include <algorithm>

#include "config/contrast.h"
#include "platform/utf.h"

namespace quilmark {

namespace {

std::string Told(const Drawn& drawn) {
  const Rect& place = drawn.place;
  return "\"" + ToUtf8(drawn.text) + "\" at " + std::to_string(place.left) + "," +
         std::to_string(place.top) + " to " + std::to_string(place.right) + "," +
         std::to_string(place.bottom);
}

// What lies under a point where the operation `end` is drawn.
Color GroundUnder(const RecordingCanvas& canvas, size_t end, int x, int y) {
  for (size_t i = end; i-- > 0;) {
    const Drawn& drawn = canvas.drawn[i];
    if (drawn.kind == Drawn::kFill && Holds(drawn.shown, {x, y})) return drawn.color;
  }
  return 0x01000000;  // nothing: no colour
}

}  // namespace

std::vector<std::string> TextsOutsideTheirBoxes(const RecordingCanvas& canvas,
                                                const TextMeasure& fonts) {
  std::vector<std::string> faults;
  for (const Drawn& drawn : canvas.drawn) {
    if (drawn.kind != Drawn::kText) continue;
    const Rect ink = InkOf(drawn, fonts);
    if (ink.top < drawn.place.top || ink.bottom > drawn.place.bottom) {
      faults.push_back("too low a box: " + Told(drawn));
    }
    if (ink.left < drawn.place.left || ink.left < 0) faults.push_back("begins outside: " + Told(drawn));
  }
  return faults;
}

std::vector<std::string> TextsOverOthers(const RecordingCanvas& canvas, const TextMeasure& fonts) {
  std::vector<std::string> faults;
  std::vector<const Drawn*> former;
  for (const Drawn& drawn : canvas.drawn) {
    if (drawn.kind == Drawn::kFill) {
      std::erase_if(former, [&](const Drawn* one) {  // what is painted over is no text any more
        const Rect ink = Intersection(InkOf(*one, fonts), one->shown);
        return Intersection(ink, drawn.shown) == ink;
      });
    }
    if (drawn.kind != Drawn::kText) continue;
    const Rect ink = Intersection(InkOf(drawn, fonts), drawn.shown);
    for (const Drawn* const one : former) {
      if (!IsEmpty(Intersection(ink, Intersection(InkOf(*one, fonts), one->shown)))) {
        faults.push_back(Told(drawn) + " over " + Told(*one));
      }
    }
    former.push_back(&drawn);
  }
  return faults;
}

std::vector<std::string> TextsOverIcons(const RecordingCanvas& canvas, const TextMeasure& fonts) {
  std::vector<std::string> faults;
  for (const Drawn& icon : canvas.drawn) {
    if (icon.kind != Drawn::kIcon) continue;
    for (const Drawn& text : canvas.drawn) {
      if (text.kind != Drawn::kText) continue;
      const Rect ink = Intersection(InkOf(text, fonts), text.shown);
      if (!IsEmpty(Intersection(ink, icon.shown))) faults.push_back(Told(text) + " over an icon");
    }
  }
  return faults;
}

std::vector<std::string> UnreadableTexts(const RecordingCanvas& canvas, const TextMeasure& fonts,
                                         std::span<const FixedPair> fixed) {
  std::vector<std::string> faults;
  for (size_t i = 0; i < canvas.drawn.size(); ++i) {
    const Drawn& drawn = canvas.drawn[i];
    if (drawn.kind != Drawn::kText) continue;
    const Rect ink = Intersection(InkOf(drawn, fonts), drawn.shown);
    if (IsEmpty(ink)) continue;
    const int y = (ink.top + ink.bottom) / 2;
    for (const int x : {ink.left, (ink.left + ink.right) / 2, ink.right - 1}) {
      const Color ground = GroundUnder(canvas, i, x, y);
      const bool isFixed = std::any_of(fixed.begin(), fixed.end(), [&](const FixedPair& pair) {
        return pair.ground == ground && pair.text == drawn.color;
      });
      if (ground > 0xFFFFFF || (!isFixed && ContrastRatio(ground, drawn.color) < kReadableContrast)) {
        faults.push_back(Told(drawn) + (ground > 0xFFFFFF ? " on nothing" : " unreadable"));
        break;
      }
    }
  }
  return faults;
}

size_t PixelsThatTilesChange(const Rect& client, const TextMeasure& fonts,
                             const std::function<void(Canvas&)>& paint) {
  const auto size = static_cast<size_t>(Width(client)) * static_cast<size_t>(Height(client));
  constexpr Color kNotPainted = 0x02000000;
  const auto paintWithin = [&](const Rect& tile, std::vector<Color>& pixels) {
    RasterCanvas canvas(tile, fonts);
    canvas.pixels = &pixels;
    canvas.width = Width(client);
    paint(canvas);
  };
  std::vector<Color> whole(size, kNotPainted), tiled(size, kNotPainted);
  paintWithin(client, whole);
  const int tileWidth = 173 * Width(client) / 700 + 1, tileHeight = 61 * Height(client) / 420 + 1;
  for (int top = 0; top < client.bottom; top += tileHeight) {
    for (int left = 0; left < client.right; left += tileWidth) {
      paintWithin(Intersection(client, {left, top, left + tileWidth, top + tileHeight}), tiled);
    }
  }
  size_t differences = 0;
  for (size_t i = 0; i < size; ++i) {
    differences += whole[i] != tiled[i] || whole[i] == kNotPainted ? 1 : 0;
  }
  return differences;
}

}  // namespace quilmark
