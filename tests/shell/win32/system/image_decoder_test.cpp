#include "shell/win32/system/image_decoder.h"

#include <gtest/gtest.h>

#include <vector>

#include "shell/win32/gdi/gdi_canvas.h"
#include "shell/win32/gdi/gdi_icon.h"
#include "shell/win32/system/com_thread.h"
#include "support/object_counts.h"
#include "support/picture_file.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

constexpr uint32_t kRed = 0xFF0000, kOpaqueRed = 0xFFFF0000;
using Pixels = std::vector<uint32_t>;  // 0xAARRGGBB, from the upper left

struct Seen {
  int width = 0, height = 0;
  Pixels pixels;

  uint32_t At(int x, int y) const { return pixels[static_cast<size_t>(y * width + x)]; }
};

Seen PixelsOf(const UniqueBitmap& bitmap) {
  BITMAP facts = {};
  EXPECT_NE(GetObjectW(bitmap.Get(), sizeof facts, &facts), 0);
  Seen seen = {facts.bmWidth, facts.bmHeight,
               Pixels(static_cast<size_t>(facts.bmWidth * facts.bmHeight))};
  BITMAPINFO info = {};
  info.bmiHeader = {.biSize = sizeof info.bmiHeader,
                    .biWidth = facts.bmWidth,
                    .biHeight = -facts.bmHeight,
                    .biPlanes = 1,
                    .biBitCount = 32,
                    .biCompression = BI_RGB};
  const WindowDc screen(nullptr);
  GetDIBits(screen.Get(), bitmap.Get(), 0, static_cast<UINT>(facts.bmHeight), seen.pixels.data(), &info,
            DIB_RGB_COLORS);
  return seen;
}

class ImageDecoder : public testing::Test {
 protected:
  ImageDecoder() { UseComOnThisThread(); }
  std::u16string File(const std::string& name, const std::string& content) {
    folder.MakeFile(name, content);
    return folder.Path() + u"\\" + std::u16string(name.begin(), name.end());
  }

  ScratchFolder folder;
};

TEST_F(ImageDecoder, PutsAPictureInTheMiddleOfAClearBox) {
  const Seen seen = PixelsOf(DecodePicture(File("a.bmp", BitmapFile(4, 2, kRed)), 16));
  ASSERT_EQ(seen.width, 16);
  ASSERT_EQ(seen.height, 16);
  for (int y = 0; y < 16; ++y) {
    for (int x = 0; x < 16; ++x) {
      const bool isInside = x >= 6 && x < 10 && y >= 7 && y < 9;
      EXPECT_EQ(seen.At(x, y), isInside ? kOpaqueRed : 0u) << x << "," << y;
    }
  }
}

TEST_F(ImageDecoder, ShrinksALargeOneByTheSmallerRatio) {
  const Seen seen = PixelsOf(DecodePicture(File("a.bmp", BitmapFile(200, 100, kRed)), 48));
  ASSERT_EQ(seen.width, 48);
  EXPECT_EQ(seen.At(0, 11), 0u);
  EXPECT_EQ(seen.At(0, 12), kOpaqueRed);
  EXPECT_EQ(seen.At(47, 35), kOpaqueRed);
  EXPECT_EQ(seen.At(47, 36), 0u);
}

TEST_F(ImageDecoder, BeginsAtTheUpperLeft) {
  const auto corner = [](int x, int y) { return x < 8 && y < 8 ? 0x00FF00u : 0x0000FFu; };
  const Seen seen = PixelsOf(DecodePicture(File("a.bmp", BitmapFile(16, 16, corner)), 16));
  EXPECT_EQ(seen.At(0, 0), 0xFF00FF00u);
  EXPECT_EQ(seen.At(0, 15), 0xFF0000FFu);
  EXPECT_EQ(seen.At(15, 0), 0xFF0000FFu);
}

TEST_F(ImageDecoder, GivesNothingForWhatIsNoPicture) {
  const std::string whole = BitmapFile(100, 100, kRed);
  EXPECT_FALSE(DecodePicture(File("text.jpg", "this is no picture"), 48));
  EXPECT_FALSE(DecodePicture(File("empty.png", ""), 48));
  EXPECT_FALSE(DecodePicture(File("cut.bmp", whole.substr(0, 30)), 48));
  EXPECT_FALSE(DecodePicture(folder.Path() + u"\\missing.png", 48));
  EXPECT_FALSE(DecodePicture(folder.Path(), 48));
}

TEST_F(ImageDecoder, TakesAPathThatIsLong) {
  const std::string deep = std::string(200, 'd') + "/" + std::string(200, 'e') + "/a.bmp";
  folder.MakeFile(deep, BitmapFile(4, 4, kRed));
  const std::u16string path =
      folder.Path() + u"\\" + std::u16string(200, u'd') + u"\\" + std::u16string(200, u'e') + u"\\a.bmp";
  EXPECT_TRUE(DecodePicture(path, 16));
}

TEST_F(ImageDecoder, ShrinksABitmapAndKeepsItsRatio) {
  const UniqueBitmap shrunk =
      ShrinkBitmap(DecodePicture(File("a.bmp", BitmapFile(256, 256, kRed)), 256), 48);
  const Seen seen = PixelsOf(shrunk);
  EXPECT_EQ(seen.width, 48);
  EXPECT_EQ(seen.height, 48);
  EXPECT_EQ(seen.At(24, 24), kOpaqueRed);
  const HBITMAP wide = CreateBitmap(200, 100, 1, 32, Pixels(20'000, kOpaqueRed).data());
  const Seen ofWide = PixelsOf(ShrinkBitmap(UniqueBitmap(wide), 48));
  EXPECT_EQ(ofWide.width, 48);
  EXPECT_EQ(ofWide.height, 24);
  EXPECT_EQ(ofWide.At(47, 23), kOpaqueRed);
}

TEST_F(ImageDecoder, LeavesASmallBitmapAsItIs) {
  UniqueBitmap small(CreateBitmap(48, 20, 1, 32, Pixels(960, kOpaqueRed).data()));
  const HBITMAP handle = small.Get();
  EXPECT_EQ(ShrinkBitmap(std::move(small), 48).Get(), handle);
}

TEST_F(ImageDecoder, HasNoIconOfNothing) { EXPECT_EQ(IconOfBitmap(UniqueBitmap()).icon, nullptr); }

// What a canvas of the window shows of an icon.
TEST_F(ImageDecoder, MakesAnIconThatIsDrawnOverWhatIsThere) {
  const IconPicture picture = IconOfBitmap(DecodePicture(File("a.bmp", BitmapFile(8, 16, kRed)), 16));
  ASSERT_NE(picture.icon, nullptr);
  EXPECT_EQ(picture.width, 16);
  UniqueMemoryDc dc(CreateCompatibleDC(nullptr));
  const UniqueBitmap ground(CreateBitmap(40, 40, 1, 32, Pixels(1'600, 0x00FFFFFF).data()));
  {
    const SelectScope selected(dc.Get(), ground.Get());
    GdiFonts fonts;
    GdiCanvas canvas(dc.Get(), fonts, {0, 0, 40, 40});
    canvas.Icon({10, 10, 26, 26}, *picture.icon);
  }
  const Seen seen = PixelsOf(ground);
  EXPECT_EQ(seen.At(9, 18) & 0xFFFFFF, 0xFFFFFFu);
  EXPECT_EQ(seen.At(12, 18) & 0xFFFFFF, 0xFFFFFFu) << "the box is clear beside the picture";
  EXPECT_EQ(seen.At(14, 10) & 0xFFFFFF, 0xFF0000u);
  EXPECT_EQ(seen.At(21, 25) & 0xFFFFFF, 0xFF0000u);
  EXPECT_EQ(seen.At(22, 25) & 0xFFFFFF, 0xFFFFFFu);
}

TEST_F(ImageDecoder, KeepsNoObject) {
  const std::u16string path = File("a.bmp", BitmapFile(100, 50, kRed));
  const auto once = [&] {
    EXPECT_NE(IconOfBitmap(ShrinkBitmap(DecodePicture(path, 64), 48)).icon, nullptr);
    EXPECT_FALSE(DecodePicture(folder.Path() + u"\\missing.png", 48));
  };
  once();
  const int64_t before = CountGdiObjects();
  for (int i = 0; i < 50; ++i) once();
  EXPECT_EQ(CountGdiObjects(), before);
}

}  // namespace
}  // namespace quilmark
