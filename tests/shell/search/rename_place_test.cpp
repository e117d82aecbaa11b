#include "shell/search/rename_place.h"

#include <gtest/gtest.h>

#include <tuple>

#include "shell/search/grid_in.h"

namespace quilmark {
namespace {

// A list with 600 pixels of rows below 130, at the right of a sidebar, and columns wider than it.
ColumnsLayout ListBesideASidebar(uint32_t dpi = 96) {
  ColumnsLayout layout;
  layout.rows = {200, 130, 1'000, 730};
  layout.columns = {60, 280, 100, 160, 160, 900};
  layout.columnsWidth = 1'660;
  layout.dpi = dpi;
  return layout;
}

// Of a row's editor that is opened, and of one that is open.
std::optional<Rect> Opened(const ColumnsLayout& layout, int64_t scrollY, int scrollX, uint64_t row) {
  return PlaceOfRenameEditor(layout, PlaceOfRow(GridIn(layout), scrollY, row), scrollX);
}
Rect Open(const ColumnsLayout& layout, int64_t scrollY, int scrollX, uint64_t row) {
  return PlaceOfOpenRenameEditor(layout, PlaceOfRow(GridIn(layout), scrollY, row), scrollX);
}

TEST(RenamePlace, IsOverTheNameColumnOfItsRow) {
  const ColumnsLayout list = ListBesideASidebar();
  const Rect third = {60 + 34 + 200, 130 + 2 * 44 + 4, 60 + 34 + 200 + 236, 130 + 2 * 44 + 40};
  EXPECT_EQ(Opened(list, 0, 0, 2), third);
  EXPECT_EQ(Open(list, 0, 0, 2), third);
  EXPECT_EQ(Opened(list, 88, 0, 4), third);
  EXPECT_EQ(Opened(list, 0, 30, 2)->left, third.left - 30);
  EXPECT_EQ(Height(*Opened(ListBesideASidebar(192), 0, 0, 2)), 72);
}

TEST(RenamePlace, IsNeverNarrowerThanAWord) {
  ColumnsLayout list = ListBesideASidebar();
  list.columns[1] = 30;
  EXPECT_EQ(Width(*Opened(list, 0, 0, 0)), 80);
}

TEST(RenamePlace, IsNoneForARowThatIsNotInView) {
  const ColumnsLayout list = ListBesideASidebar();
  EXPECT_TRUE(Opened(list, 88, 0, 2).has_value());
  EXPECT_FALSE(Opened(list, 89, 0, 2).has_value()) << "its upper end is below the header";
  EXPECT_TRUE(Opened(list, 0, 0, 13).has_value());
  EXPECT_FALSE(Opened(list, 0, 0, 14).has_value());
}

TEST(RenamePlace, OfAnOpenEditorIsOutsideOfTheWindowWhileItsNameIsNotInView) {
  const ColumnsLayout list = ListBesideASidebar();
  const Rect inView = Open(list, 0, 0, 2);
  for (const auto& [scrollY, scrollX, row] : {std::tuple(89, 0, 2), std::tuple(0, 0, 14),
                                              std::tuple(10'000'000, 0, 2), std::tuple(0, 95, 2)}) {
    const Rect place = Open(list, scrollY, scrollX, static_cast<uint64_t>(row));
    EXPECT_LT(place.bottom, 0) << scrollY << " " << scrollX;
    EXPECT_EQ(Width(place), Width(inView));
    EXPECT_EQ(Height(place), Height(inView));
  }
  EXPECT_GT(Open(list, 0, 94, 2).top, 0) << "its name begins at the list's edge";
}

}  // namespace
}  // namespace quilmark
