#include "cli/narrow.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

const FilterTable kTable = {{u"All", {}}, {u"Folders", {u".dir"}}, {u"Notes", {u".md", u".txt"}}};
constexpr size_t kAll = 0, kFolders = 1, kNotes = 2;

// The category that the filter of these extensions and of a category tests.
FilterCategory SelectedBy(const std::vector<std::u16string>& extensions, size_t category) {
  const FilterContext filter = MakeHitFilter({.extensions = extensions}, kTable, category);
  EXPECT_FALSE(filter.settings.IsOff());
  return filter.categories->at(static_cast<size_t>(filter.settings.category));
}

TEST(HitFilter, IsOffWithoutAnOption) {
  EXPECT_TRUE(MakeHitFilter({}, {}, kAll).settings.IsOff());
  EXPECT_TRUE(MakeHitFilter({.category = "All"}, kTable, kAll).settings.IsOff());
}

TEST(HitFilter, TakesExtensionsOrThoseOfTheCategory) {
  EXPECT_EQ(SelectedBy({u".pdf"}, kAll).extensions, (std::vector<std::u16string>{u".pdf"}));
  EXPECT_EQ(SelectedBy({}, kNotes).extensions, kTable[kNotes].extensions);
}

TEST(HitFilter, TakesWhatBothSelect) {
  EXPECT_EQ(SelectedBy({u".txt", u".pdf"}, kNotes).extensions, (std::vector<std::u16string>{u".txt"}));
  EXPECT_TRUE(SelectedBy({u".pdf"}, kNotes).extensions.empty());
  EXPECT_TRUE(SelectedBy({u".txt"}, kFolders).extensions.empty());
  EXPECT_TRUE(SelectedBy({u".dir"}, kNotes).extensions.empty());
  EXPECT_TRUE(IsFolderCategory(SelectedBy({u".folder"}, kFolders)));
}

TEST(HitFilter, BothEndsOfSizesBelongToThem) {
  const FilterContext filter = MakeHitFilter({.size = SizeRange{10, 20}}, {}, kAll);
  EXPECT_FALSE(PassesPresets(filter, 9, 0));
  EXPECT_TRUE(PassesPresets(filter, 10, 0));
  EXPECT_TRUE(PassesPresets(filter, 20, 0));
  EXPECT_FALSE(PassesPresets(filter, 21, 0));
}

TEST(HitFilter, BothEndsOfDatesBelongToThemAndNoDateDoesNot) {
  const FilterContext filter = MakeHitFilter({.modified = DateRange{0, 20}}, {}, kAll);
  EXPECT_FALSE(PassesPresets(filter, 1, 0));
  EXPECT_TRUE(PassesPresets(filter, 1, 1));
  EXPECT_TRUE(PassesPresets(filter, 1, 20));
  EXPECT_FALSE(PassesPresets(filter, 1, 21));
}

}  // namespace
}  // namespace quilmark
