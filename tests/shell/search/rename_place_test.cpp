#include "shell/search/rename_place.h"

#include <gtest/gtest.h>

#include <tuple>

#include "shell/search/layout.h"

namespace quilmark {
namespace {

// A list with 600 pixels of rows below 130, at the right of a sidebar, and columns wider than it.
ListLayout ListBesideASidebar(uint32_t dpi = 96) {
  ListLayout layout;
  layout.rows = {200, 130, 1'000, 730};
  layout.pitch = ScaleFor(dpi, 44);
  layout.columns = {60, 280, 100, 160, 160, 900};
  layout.columnsWidth = 1'660;
  layout.dpi = dpi;
  return layout;
}

TEST(RenamePlace, IsOverTheNameColumnOfItsRow) {
  const ListLayout list = ListBesideASidebar();
  const Rect third = {60 + 34 + 200, 130 + 2 * 44 + 4, 60 + 34 + 200 + 236, 130 + 2 * 44 + 40};
  EXPECT_EQ(PlaceOfRenameEditor(list, 0, 0, 2), third);
  EXPECT_EQ(PlaceOfOpenRenameEditor(list, 0, 0, 2), third);
  EXPECT_EQ(PlaceOfRenameEditor(list, 88, 0, 4), third);
  EXPECT_EQ(PlaceOfRenameEditor(list, 0, 30, 2)->left, third.left - 30);
  EXPECT_EQ(Height(*PlaceOfRenameEditor(ListBesideASidebar(192), 0, 0, 2)), 72);
}

TEST(RenamePlace, IsNeverNarrowerThanAWord) {
  ListLayout list = ListBesideASidebar();
  list.columns[1] = 30;
  EXPECT_EQ(Width(*PlaceOfRenameEditor(list, 0, 0, 0)), 80);
}

TEST(RenamePlace, IsNoneForARowThatIsNotInView) {
  const ListLayout list = ListBesideASidebar();
  EXPECT_TRUE(PlaceOfRenameEditor(list, 88, 0, 2).has_value());
  EXPECT_FALSE(PlaceOfRenameEditor(list, 89, 0, 2).has_value()) << "its upper end is below the header";
  EXPECT_TRUE(PlaceOfRenameEditor(list, 0, 0, 13).has_value());
  EXPECT_FALSE(PlaceOfRenameEditor(list, 0, 0, 14).has_value());
}

TEST(RenamePlace, OfAnOpenEditorIsOutsideOfTheWindowWhileItsNameIsNotInView) {
  const ListLayout list = ListBesideASidebar();
  const Rect inView = PlaceOfOpenRenameEditor(list, 0, 0, 2);
  for (const auto& [scrollY, scrollX, row] : {std::tuple(89, 0, 2), std::tuple(0, 0, 14),
                                              std::tuple(10'000'000, 0, 2), std::tuple(0, 95, 2)}) {
    const Rect place = PlaceOfOpenRenameEditor(list, scrollY, scrollX, static_cast<uint64_t>(row));
    EXPECT_LT(place.bottom, 0) << scrollY << " " << scrollX;
    EXPECT_EQ(Width(place), Width(inView));
    EXPECT_EQ(Height(place), Height(inView));
  }
  EXPECT_GT(PlaceOfOpenRenameEditor(list, 0, 94, 2).top, 0) << "its name begins at the list's edge";
}

}  // namespace
}  // namespace quilmark
