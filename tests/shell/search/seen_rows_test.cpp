#include "shell/search/seen_rows.h"

#include <gtest/gtest.h>

#include "shell/window_harness.h"
#include "support/gate.h"

namespace quilmark {
namespace {

TEST(SeenRows, AreOfOneSetOrOfNone) {
  const auto one = std::make_shared<const ResultSet>(), other = std::make_shared<const ResultSet>();
  EXPECT_TRUE(SeenRows().IsSameSet(SeenRows()));
  EXPECT_FALSE(SeenRows().IsSameSet({.set = one}));
  EXPECT_TRUE((SeenRows{.set = one}.IsSameSet({.set = one})));
  EXPECT_FALSE((SeenRows{.set = one}.IsSameSet({.set = other})));
}

// A paint asks, behind a search that holds the lock and a writer that waits for it.
TEST(SeenRows, WaitForNobody) {
  WindowHarness harness;
  VolumeIndex& volume = *AddVolume(Engine(), MakeTestVolume(u"Q:"));
  const Gate gate(volume.indexLock, Gate::Stops::kAll);
  EXPECT_TRUE(SeeRows(std::make_shared<const ResultSet>()).HasBuild(&volume, volume.builds));
}

TEST(SeenRows, KnowTheBuildOfEachVolumeThatCouldBeShown) {
  WindowHarness harness;
  VolumeIndex& shown = *AddVolume(Engine(), MakeTestVolume(u"Q:"));
  VolumeIndex& lost = *AddVolume(Engine(), MakeTestVolume(u"R:"));
  lost.valid = false;
  const auto set = std::make_shared<const ResultSet>();
  const SeenRows seen = SeeRows(set);
  EXPECT_TRUE(seen.HasBuild(&shown, shown.builds));
  EXPECT_FALSE(seen.HasBuild(&shown, shown.builds + 1));
  EXPECT_FALSE(seen.HasBuild(&lost, lost.builds));
  EXPECT_EQ(seen.set.lock(), set);
}

TEST(SeenRows, AreChosenFromWhileTheListShowsThem) {
  WindowHarness harness;
  SearchView& view = harness.app.search;
  EXPECT_EQ(ChosenSet(view), nullptr) << "nothing was seen yet";
  harness.HoldResults(3);
  (void)view.source.Read(0, 3);
  BeginChoice(view);
  SelectOnly(view.list.selection, 1);
  EXPECT_EQ(ChosenSet(view), ShownResults());
  BeginChoice(view);
  EXPECT_EQ(view.list.selection.rows.size(), 1u) << "of the same rows";
  harness.HoldResults(3);
  EXPECT_EQ(ChosenSet(view), nullptr);
}

}  // namespace
}  // namespace quilmark
