#include "shell/win32/gdi/gdi_canvas.h"

#include <gtest/gtest.h>

#include <vector>

#include "shell/allocation_count.h"

namespace quilmark {
namespace {

constexpr int kWidth = 400, kHeight = 30;
constexpr Color kGround = 0xFFFFFF, kLetters = 0;
constexpr Rect kPlace = {40, 5, 240, 25};

using Column = std::vector<uint32_t>;

// A white picture in memory that can be looked at.
class Picture {
 public:
  Picture() {
    BITMAPINFO info = {};
    info.bmiHeader = {.biSize = sizeof info.bmiHeader,
                      .biWidth = kWidth,
                      .biHeight = -kHeight,
                      .biPlanes = 1,
                      .biBitCount = 32,
                      .biCompression = BI_RGB};
    void* bits = nullptr;
    bitmap_.Reset(CreateDIBSection(dc_.Get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    pixels_ = static_cast<const uint32_t*>(bits);
    FontSet former = fonts_.Take(MakeFonts(96, false));
  }

  // What stands in a picture of this text alone, column by column.
  std::vector<Column> Of(std::u16string_view text, const TextStyle& style, const Rect& place = kPlace) {
    const SelectScope selected(dc_.Get(), bitmap_.Get());
    {
      GdiCanvas canvas(dc_.Get(), fonts_, {0, 0, kWidth, kHeight});
      canvas.Fill({0, 0, kWidth, kHeight}, kGround);
      canvas.Text(place, text, style, {});
    }
    GdiFlush();
    std::vector<Column> columns(kWidth, Column(kHeight));
    for (int i = 0; i < kWidth * kHeight; ++i) {
      columns[static_cast<size_t>(i % kWidth)][static_cast<size_t>(i / kWidth)] = pixels_[i] & 0xFFFFFF;
    }
    return columns;
  }
  // What the drawing of a picture takes from the heap.
  size_t AllocationsOf(std::u16string_view text, const TextStyle& style, const Marks& marks) {
    const SelectScope selected(dc_.Get(), bitmap_.Get());
    const AllocationCount count;
    GdiCanvas canvas(dc_.Get(), fonts_, {0, 0, kWidth, kHeight});
    const CanvasClip clip(canvas, {0, 0, kWidth, kHeight});
    canvas.FillRound(kPlace, 8, kLetters);
    canvas.Text(kPlace, text, style, marks);
    return count.Value();
  }

 private:
  GdiFonts fonts_;
  UniqueMemoryDc dc_{CreateCompatibleDC(nullptr)};
  UniqueBitmap bitmap_;
  const uint32_t* pixels_ = nullptr;
};

bool HasInk(const Column& column) {
  return std::any_of(column.begin(), column.end(), [](uint32_t pixel) { return pixel != kGround; });
}

// From the first column with letters to behind the last.
PixelSpan InkOf(const std::vector<Column>& columns) {
  PixelSpan ink{kWidth, 0};
  for (int x = 0; x < kWidth; ++x) {
    if (!HasInk(columns[static_cast<size_t>(x)])) continue;
    ink.left = std::min(ink.left, x);
    ink.right = x + 1;
  }
  return ink;
}

std::vector<Column> Part(const std::vector<Column>& columns, PixelSpan span) {
  return {columns.begin() + span.left, columns.begin() + span.right};
}

class GdiCanvasText : public testing::Test {
 protected:
  std::vector<Column> Path(std::u16string_view path, const Rect& place = kPlace) {
    return picture.Of(path, {.color = kLetters, .cut = Cut::kPath}, place);
  }
  Picture picture;
};

TEST_F(GdiCanvasText, StandsAtTheSideThatItIsAlignedTo) {
  const auto inkOf = [&](Align align) {
    return InkOf(picture.Of(u"3.40 MB", {.color = kLetters, .align = align}));
  };
  const PixelSpan left = inkOf(Align::kLeft), centre = inkOf(Align::kCentre),
                  right = inkOf(Align::kRight);
  EXPECT_NEAR(left.left, kPlace.left, 3);
  EXPECT_NEAR((centre.left + centre.right) / 2, (kPlace.left + kPlace.right) / 2, 3);
  EXPECT_NEAR(right.right, kPlace.right, 3);
  EXPECT_EQ(right.right - right.left, left.right - left.left);
}

TEST_F(GdiCanvasText, APathThatDoesNotFitKeepsItsLastPart) {
  const std::u16string_view name = u"annals.docx";
  const auto path = Path(u"C:\\Users\\somebody\\Documents\\of the year\\" + std::u16string(name));
  const PixelSpan ink = InkOf(path);
  EXPECT_GE(ink.left, kPlace.left);
  EXPECT_LE(ink.right, kPlace.right);
  const auto alone = picture.Of(name, {.color = kLetters});
  const PixelSpan inkAlone = InkOf(alone);
  const int width = inkAlone.right - inkAlone.left;
  EXPECT_TRUE(Part(path, {ink.right - width, ink.right}) == Part(alone, inkAlone));
  const auto atEnd =
      picture.Of(u"C:\\Users\\somebody\\Documents\\of the year\\annals.docx", {.color = kLetters});
  const PixelSpan inkAtEnd = InkOf(atEnd);
  EXPECT_FALSE(Part(atEnd, {inkAtEnd.right - width, inkAtEnd.right}) == Part(alone, inkAlone));
}

TEST_F(GdiCanvasText, APathThatFitsIsWhole) {
  EXPECT_TRUE(Path(u"C:\\docs\\annals.docx") ==
              picture.Of(u"C:\\docs\\annals.docx", {.color = kLetters}));
}

TEST_F(GdiCanvasText, APathStaysInItsPlaceHoweverNarrowThatIs) {
  for (const int width : {0, 1, 7, 30, 60, 150}) {
    const Rect place = {kPlace.left, kPlace.top, kPlace.left + width, kPlace.bottom};
    for (const std::u16string_view path :
         {u"C:\\a name that is longer than all the room there is.txt",
          u"no-folder-at-all-in-this-one.txt",
          u"C:\\\u0645\u0644\u0641 \u0639\u0631\u0628\u064A\\\u0645\u0644\u0641 "
          u"\u0639\u0631\u0628\u064A.txt"}) {
      const PixelSpan ink = InkOf(Path(path, place));
      if (ink.left >= ink.right) continue;  // no letters
      EXPECT_GE(ink.left, place.left) << width;
      EXPECT_LE(ink.right, place.right) << width;
    }
  }
}

TEST_F(GdiCanvasText, TakesNothingFromTheHeap) {
  const std::u16string_view text = u"C:\\Users\\somebody\\Documents\\of the year\\资料.docx";
  const TextRange hits[] = {{3, 5}, {9, 8}, {40, 2}};
  const Marks marks{.ranges = hits, .ground = kGround, .text = kLetters};
  picture.AllocationsOf(text, {}, marks);  // the fonts are measured on a context of their own
  EXPECT_EQ(picture.AllocationsOf(text, {}, {}), 0u);
  EXPECT_EQ(picture.AllocationsOf(text, {}, marks), 0u);
  EXPECT_EQ(picture.AllocationsOf(text, {.align = Align::kRight}, {}), 0u);
  EXPECT_EQ(picture.AllocationsOf(text, {.cut = Cut::kPath}, {}), 0u);
}

}  // namespace
}  // namespace quilmark
