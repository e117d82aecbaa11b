#include "shell/list/made_up_lists.h"

#include <algorithm>
#include <array>

#include "config/contrast.h"
#include "platform/format.h"

namespace quilmark {

namespace {

constexpr Color kDark = ColorOfHex(0x141414), kWhite = 0xFFFFFF;

constexpr std::u16string_view kNames[] = {
    u"a", u"Program Files (x86)", u"资料-中文名",
    u"name-with-a-very-long-text-that-no-column-holds-at-all-and-no-cell-either.bin", u"pagefile.sys"};
constexpr std::u16string_view kSizes[] = {u"0 B", u"1023.99 MB", u"12.50 KB", u"999 B", u"1.25 TB"};

// Of equal sizes, one after the other.
template <typename T, size_t N>
const T& Pick(const T (&all)[N], uint64_t row) {
  return all[row % N];
}

void PutText(Canvas& canvas, const Rect& place, std::u16string_view text, const TextStyle& style) {
  if (!IsEmpty(place)) canvas.Text(place, text, style);
}

// A bar that is filled from the left.
void PaintShare(Canvas& canvas, const ViewContext& context, const Rect& track, int filled, Color ground,
                Color fill) {
  constexpr int kRadius = 3;
  if (IsEmpty(track)) return;
  canvas.FillRound(track, context.Scaled(kRadius), ground);
  const CanvasClip clip(canvas, {track.left, track.top, track.left + filled, track.bottom});
  canvas.FillRound(track, context.Scaled(kRadius), fill);
}

// Letters on `accent`, and the colour of a chosen row's badge.
Color ContrastOf(Color accent) {
  constexpr int kLight = 140;
  return Luminance(accent) < kLight ? kWhite : kDark;
}

struct GroupColors {
  Color ground, letters, right, badge, badgeLetters, track, fill;
};

GroupColors ColorsOfGroup(const Palette& palette, uint64_t rank, bool isChosen, bool isHovered) {
  constexpr uint64_t kFirstRanks = 3;
  const Color card = palette.cardBackground, accent = palette.accent, muted = palette.mutedFixed;
  const Color contrast = ContrastOf(accent);
  const Color ground = isChosen    ? MixColor(card, accent, 68)
                       : isHovered ? MixColor(card, accent, 52)
                                   : card;
  const Color badge = isChosen ? contrast : rank < kFirstRanks ? accent : MixColor(card, muted, 55);
  return {.ground = ground,
          .letters = ReadableOn(ground, palette.text),
          .right = ReadableOn(ground, isChosen ? MixColor(contrast, muted, 70) : muted),
          .badge = badge,
          .badgeLetters = ReadableOn(badge, isChosen ? accent : ContrastOf(badge)),
          .track = MixColor(card, palette.surface, 42),
          .fill = isChosen ? accent : MixColor(accent, muted, 72)};
}

// Gives the badge's right edge.
int PaintBadge(Canvas& canvas, const ViewContext& context, const Rect& row, uint64_t rank,
               const GroupColors& colors) {
  constexpr int kLeft = 10, kHeight = 22, kInset = 6;
  const std::u16string text = FormatText(u"%llu", rank + 1);
  const int height = context.Scaled(kHeight), left = row.left + context.Scaled(kLeft);
  const int top = (row.top + row.bottom - height) / 2;
  const int letters = context.fonts.WidthOf(FontRole::kHeader, text) + 2 * context.Scaled(kInset);
  const Rect badge = {left, top, left + std::max(height, letters), top + height};
  canvas.FillRound(badge, height, colors.badge);
  canvas.Text(badge, text,
              {.font = FontRole::kHeader, .color = colors.badgeLetters, .align = Align::kCentre});
  return badge.right;
}

struct SpaceColors {
  Color letters, muted;
};

// Two lines: the name, and its kind beside a bar of its share.
void PaintNameAndKind(Canvas& canvas, const ViewContext& context, const Rect& at, const SpaceRow& data,
                      const SpaceColors& colors) {
  constexpr int kTop = 3, kGap = 8, kBar = 4;
  const int top = at.top + context.Scaled(kTop);
  const int middle = top + context.fonts.LineHeight(FontRole::kList);
  PutText(canvas, {at.left, top, at.right, middle}, data.name, {.color = colors.letters});
  const std::u16string_view kind = data.isDirectory ? u"folder" : u"file";
  const int below = middle + context.fonts.LineHeight(FontRole::kSmall);
  const int kindEnd = at.left + context.fonts.WidthOf(FontRole::kSmall, kind);
  PutText(canvas, {at.left, middle, std::min(kindEnd, at.right), below}, kind,
          {.font = FontRole::kSmall, .color = colors.muted});
  const int barTop = (middle + below - context.Scaled(kBar)) / 2;
  const Rect track = {kindEnd + context.Scaled(kGap), barTop, at.right, barTop + context.Scaled(kBar)};
  const int filled = static_cast<int>(Width(track) * std::min(data.percent, 100.0) / 100);
  const Palette& palette = context.palette;
  PaintShare(canvas, context, track, filled, MixColor(palette.cardBackground, palette.surface, 75),
             data.slice);
}

}  // namespace

SpaceRow SpaceRows::RowOf(uint64_t row) const {
  constexpr Color kSlices[] = {ColorOfHex(0x2FA36E), ColorOfHex(0xD46A2E), ColorOfHex(0x64748B)};
  const double percent = row == 0 ? 100.0 : 60.0 / static_cast<double>(row);
  return {.name = std::u16string(Pick(kNames, row)),
          .size = std::u16string(Pick(kSizes, row)),
          .share = FormatText(u"%.1f%%", percent),
          .isDirectory = row % 2 == 0,
          .percent = percent,
          .slice = Pick(kSlices, row)};
}

void SpaceRows::PaintRead(Canvas& canvas, uint64_t row, const SpaceRow& data, const RowPlace& place,
                          const ViewContext& context) const {
  constexpr int kInset = 10, kChip = 10, kGap = 8, kSize = 80, kShare = 58;
  const auto scaled = [&](int n) { return context.Scaled(n); };
  const Palette& palette = context.palette;
  const Rect& at = place.row;
  const Color ground = IsChosen(row)     ? MixColor(palette.cardBackground, palette.accent, 82)
                       : place.isHovered ? MixColor(palette.cardBackground, palette.accent, 88)
                                         : palette.cardBackground;
  if (ground != palette.cardBackground) canvas.Fill(at, ground);
  const SpaceColors colors = {ReadableOn(ground, palette.text), ReadableOn(ground, palette.mutedFixed)};

  const int top = (at.top + at.bottom - scaled(kChip)) / 2;
  const Rect chip = {at.left + scaled(kInset), top, at.left + scaled(kInset) + scaled(kChip),
                     top + scaled(kChip)};
  canvas.FillRound(chip, scaled(3), data.slice);
  const int right = at.right - scaled(kInset), sizeLeft = right - scaled(kSize),
            shareLeft = sizeLeft - scaled(kShare);
  PutText(canvas, {std::max(sizeLeft, chip.right), at.top, right, at.bottom}, data.size,
          {.color = colors.letters, .align = Align::kRight});
  PutText(canvas, {std::max(shareLeft, chip.right), at.top, sizeLeft, at.bottom}, data.share,
          {.color = colors.muted, .align = Align::kRight});
  PaintNameAndKind(canvas, context,
                   {chip.right + scaled(kGap), at.top, shareLeft - scaled(kGap), at.bottom}, data,
                   colors);
}

GroupRow GroupRows::RowOf(uint64_t row) const {
  const std::u16string_view size = Pick(kSizes, row + 1);
  return {.total = FormatText(u"%s  %s", u"Total", size),
          .each = FormatText(u"%s × %zu", size, row * row * row * 1'000 + 2),
          .totalSize = row == 4 ? 0 : largest / static_cast<int64_t>(row + 1)};
}

void GroupRows::PaintRead(Canvas& canvas, uint64_t row, const GroupRow& data, const RowPlace& place,
                          const ViewContext& context) const {
  constexpr int kEdge = 3, kGap = 10, kTop = 6, kBottom = 24, kLeastBox = 72, kBoxRoom = 4, kBoxGap = 8,
                kBarTop = 14, kBarBottom = 6, kLeastFill = 2;
  const auto scaled = [&](int n) { return context.Scaled(n); };
  const Rect& at = place.row;
  const GroupColors colors = ColorsOfGroup(context.palette, row, IsChosen(row), place.isHovered);
  canvas.Fill(at, colors.ground);
  if (IsChosen(row)) {
    canvas.Fill({at.left, at.top, at.left + scaled(kEdge), at.bottom}, context.palette.accent);
  }
  const int left = PaintBadge(canvas, context, at, row, colors) + scaled(kGap);
  const int right = at.right - scaled(kGap), width = right - left;
  if (width <= 0) return;
  const int wanted = context.fonts.WidthOf(FontRole::kList, data.each) + scaled(kBoxRoom);
  const int box = std::min(std::max(std::min(wanted, width / 3), scaled(kLeastBox)), width);
  // From 6 to 24, but never lower than a line of its letters.
  const int top = at.top + scaled(kTop);
  const int bottom = top + std::max(scaled(kBottom - kTop), context.fonts.LineHeight(FontRole::kList));
  PutText(canvas, {right - box, top, right, bottom}, data.each,
          {.color = colors.right, .align = Align::kRight});
  PutText(canvas, {left, top, right - box - scaled(kBoxGap), bottom}, data.total,
          {.font = FontRole::kHeader, .color = colors.letters});
  const Rect track = {left, at.bottom - scaled(kBarTop), right, at.bottom - scaled(kBarBottom)};
  const int64_t filled = (int64_t{width} * data.totalSize + largest / 2) / std::max<int64_t>(largest, 1);
  const int64_t least = data.totalSize > 0 ? kLeastFill : 0;
  PaintShare(canvas, context, track, static_cast<int>(std::clamp<int64_t>(filled, least, width)),
             colors.track, colors.fill);
}

FileRow FileRows::RowOf(uint64_t row) const {
  constexpr std::u16string_view kFolders[] = {u"C:\\", u"D:\\Photos\\2024\\summer\\",
                                              u"C:\\Users\\somebody\\Documents\\项目\\报告\\"};
  return {.path = std::u16string(Pick(kFolders, row)) + std::u16string(Pick(kNames, row)),
          .size = std::u16string(Pick(kSizes, row))};
}

void FileRows::PaintRead(Canvas& canvas, uint64_t row, const FileRow& data, const RowPlace& place,
                         const ViewContext& context) const {
  constexpr int kInset = 12, kPathEnd = 90, kSizeWidth = 86, kSizeEnd = 10, kLine = 8, kGap = 4;
  const auto scaled = [&](int n) { return context.Scaled(n); };
  const Palette& palette = context.palette;
  const Rect& at = place.row;
  const Color ground = IsChosen(row)     ? MixColor(palette.cardBackground, palette.accent, 62)
                       : place.isHovered ? MixColor(palette.cardBackground, palette.accent, 52)
                                         : palette.cardBackground;
  if (ground != palette.cardBackground) canvas.Fill(at, ground);
  canvas.Fill({at.left + scaled(kLine), at.bottom - 1, at.right - scaled(kLine), at.bottom},
              MixColor(palette.cardBackground, palette.border, 45));
  const int sizeRight = at.right - scaled(kSizeEnd), sizeLeft = sizeRight - scaled(kSizeWidth);
  const Rect size = {std::max(sizeLeft, at.left), at.top, sizeRight, at.bottom};
  PutText(canvas, size, data.size,
          {.color = ReadableOn(ground, palette.mutedFixed), .align = Align::kRight});
  // The box of the size reaches over the end of the path's: letters never do.
  const int letters =
      sizeRight - std::min(context.fonts.WidthOf(FontRole::kList, data.size), Width(size));
  const int end = std::min(at.right - scaled(kPathEnd), letters - scaled(kGap));
  PutText(canvas, {at.left + scaled(kInset), at.top, end, at.bottom}, data.path,
          {.color = ReadableOn(ground, palette.text), .cut = Cut::kPath});
}

}  // namespace quilmark
