// Icons and thumbnails in the window: pictures of all shapes, pictures that are none, and more of them
// than are kept.
#include <windows.h>

#include <gtest/gtest.h>

#include "support/picture_file.h"
#include "window/window_program.h"

namespace quilmark {
namespace {

constexpr uint32_t kLargeIcons = 2;
constexpr int kIconTop = 8, kCellWidth = 150;

class Pictures : public testing::Test {
 protected:
  ~Pictures() override {
    if (!program.IsRunning()) return;
    program.Exit();
    EXPECT_EQ(program.WaitForEnd(), 0u);
  }

  void Resize(int width, int height) {
    SetWindowPos(program.Window(), nullptr, 0, 0, width, height, SWP_NOZORDER);
    WaitUntil("the new size", [&] { return program.Ask(Probe::kClientWidth) > width - 40; });
  }
  void WaitForThumbnails(int64_t shown, int64_t refused = 0) {
    WaitUntil("the thumbnails", [&] {
      return program.Ask(Probe::kThumbnailsInView) == shown &&
             program.Ask(Probe::kRefusedInView) == refused;
    });
  }
  void Picture(const std::string& name) {
    WaitUntil("a list at rest", [this] { return program.Ask(Probe::kIsScrolling) == 0; });
    program.Ask(Probe::kRepaint, 1);
    program.Screenshot(name);
  }
  // In the middle of the icon of a cell of the first line.
  int64_t IconPixel(int cell) {
    const auto y = static_cast<uint32_t>(program.Ask(Probe::kHeaderTop) + kIconTop + 24);
    const auto x = static_cast<uint32_t>(cell * kCellWidth + kCellWidth / 2);
    return program.Ask(Probe::kPixel, x + 65'536 * y);
  }

  WindowProgram program;
};

// Hills below a sky, in other colours with each.
std::string Landscape(int width, int height, uint32_t seed) {
  return BitmapFile(width, height, [&](int x, int y) -> uint32_t {
    const int hill = height * 2 / 3 - (x * (width - x)) * height / (width * width + 1);
    const uint32_t shade = static_cast<uint32_t>(y * 160 / height);
    if ((x - width / 4) * (x - width / 4) + (y - height / 4) * (y - height / 4) < height * height / 60) {
      return 0xFFE060;
    }
    const uint32_t sky = 0x4080FF - (shade << 8) / 2 + ((seed * 37) << 16) % 0x400000;
    return y < hill ? sky : 0x205020 + ((seed * 29 % 160) << 8) + (shade << 16) / 2;
  });
}

TEST_F(Pictures, StandAmongLargeIconsInBothThemes) {
  struct Shape {
    int width, height;
  };
  constexpr Shape kShapes[] = {{320, 240}, {240, 320}, {64, 64}, {400, 100},
                               {100, 400}, {20, 12},   {48, 48}, {1'600, 1'200}};
  for (size_t i = 0; i < std::size(kShapes); ++i) {
    program.Drive().MakeFile("album/picture " + std::to_string(i) + ".bmp",
                             Landscape(kShapes[i].width, kShapes[i].height, static_cast<uint32_t>(i)));
  }
  program.Drive().MakeFile("album/picture 8 cut.bmp", Landscape(100, 100, 8).substr(0, 40));
  program.Drive().MakeFile("album/picture 9 corrupt.jpg", std::string(5'000, '\x5A'));
  program.Drive().MakeFile("album/picture 10 empty.png");
  program.Drive().MakeFile("album/picture of words.txt", "words");
  program.Drive().MakeFolder("album/picture folder.png");
  program.StartAndWait();
  program.SearchFor(u"picture");
  Resize(1'100, 700);
  program.Ask(Probe::kSetView, kLargeIcons);
  WaitForThumbnails(8, 3);
  for (const bool dark : {false, true}) {
    if (dark) program.Ask(Probe::kSwitchTheme, 1);
    Picture(dark ? "pictures-dark" : "pictures-light");
  }
  for (const int dpi : {144, 192}) {
    PostMessageW(program.Window(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), 0);
    WaitUntil("the scale", [&] { return program.Ask(Probe::kDpi) == dpi; });
    Resize(1'100 * dpi / 96, 700 * dpi / 96);  // room for all of them
    program.Ask(Probe::kShowRow, 0);
    program.Ask(Probe::kRepaint, 1);
    WaitForThumbnails(8, 3);
    Picture("pictures-" + std::to_string(dpi * 100 / 96));
  }
  for (const uint32_t view : {0u, 1u}) {
    program.Ask(Probe::kSetView, view);
    Picture(view == 0 ? "pictures-as-a-list" : "pictures-as-small-icons");
  }
}

TEST_F(Pictures, AreShownOnceTheyHaveCome) {
  program.Drive().MakeFile("red shape.bmp", BitmapFile(80, 80, 0xFF0000));
  program.StartAndWait();
  program.SearchFor(u"shape");
  program.Ask(Probe::kSetView, kLargeIcons);
  WaitUntil("a red pixel", [this] { return IconPixel(0) == RGB(0xFF, 0, 0); });
}

// A corrupt one is not asked for again and again.
TEST_F(Pictures, ThatAreNoneLeaveTheWindowAtRest) {
  program.Drive().MakeFile("corrupt shape.png", "no picture");
  program.StartAndWait();
  program.SearchFor(u"shape");
  program.Ask(Probe::kSetView, kLargeIcons);
  WaitForThumbnails(0, 1);
  program.Ask(Probe::kRepaint, 1);
  const int64_t jobs = program.Ask(Probe::kThumbnailJobs);
  for (int i = 0; i < 20; ++i) program.Ask(Probe::kRepaint, 1);
  EXPECT_LE(program.Ask(Probe::kThumbnailJobs), jobs + 1) << "one that was on its way";
}

// Far more than are kept: the objects that the program holds stay level.
TEST_F(Pictures, ByTheThousandsHoldAsManyObjectsAsAreKept) {
  constexpr int kFiles = 10'000, kMostKept = 2'048;
  const std::string file = BitmapFile(8, 8, 0x3366CC);
  for (int i = 0; i < kFiles; ++i) {
    program.Drive().MakeFile("many/" + std::to_string(i / 100) + "/shape " + std::to_string(i) + ".bmp",
                             file);
  }
  program.StartAndWait();
  program.SearchFor(u"shape");
  WaitUntil("all rows", [this] { return program.Ask(Probe::kRows) == kFiles; });
  Resize(2'560, 1'440);
  program.Ask(Probe::kSetView, kLargeIcons);
  const int64_t before = program.Ask(Probe::kGdiObjects);
  int64_t most = 0, mostAtHalf = 0;
  const int64_t columns = program.Ask(Probe::kClientWidth) / kCellWidth;
  const int64_t lines = (program.Ask(Probe::kClientHeight) - program.Ask(Probe::kHeaderTop)) / 112;
  for (int64_t line = 0; line * columns < kFiles; line += lines) {
    program.Ask(Probe::kShowRow, static_cast<uint32_t>(line));
    program.Ask(Probe::kRepaint, 1);
    WaitUntil("the thumbnails", [&] {
      return program.Ask(Probe::kThumbnailsInView) >= std::min(columns * lines, kFiles - line * columns);
    });
    most = std::max(most, program.Ask(Probe::kGdiObjects));
    if (line * columns < kFiles / 2) mostAtHalf = most;
  }
  Picture("pictures-by-the-thousands");
  constexpr int64_t kObjectsOfAnIcon = 3;  // under Wine: itself and two bitmaps
  EXPECT_LE(most, before + kObjectsOfAnIcon * kMostKept + 100);
  EXPECT_GE(most, before + kMostKept) << "as many as that were kept";
  EXPECT_LE(most, mostAtHalf + 20) << "no more of them in the second half";
}

}  // namespace
}  // namespace quilmark
