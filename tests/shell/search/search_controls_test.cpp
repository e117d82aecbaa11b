// What the controls of the search view report, and what it keeps.
#include "shell/search/search_controls.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "config/config_directory.h"
#include "platform/text_file.h"
#include "shell/window_harness.h"

namespace quilmark {
namespace {

class SearchControls : public testing::Test {
 protected:
  Effects Report(const ControlEvent& event) {
    Effects effects = view.OnControl(event, harness.Context());
    harness.Carry(effects);
    return effects;
  }
  Effects Choose(int id, int value) {
    return Report({.kind = ControlEvent::kChosen, .id = id, .value = value});
  }
  Effects Type(int id, const std::u16string& text) {
    return Report({.kind = ControlEvent::kText, .id = id, .text = text});
  }
  std::vector<int> Placed() {
    std::vector<int> ids;
    for (const ControlPlace& place : view.Layout(harness.Context())) ids.push_back(place.id);
    return ids;
  }
  bool IsPlaced(int id) {
    const auto ids = Placed();
    return std::find(ids.begin(), ids.end(), id) != ids.end();
  }
  static std::u16string Saved() {
    return ReadTextFile(GetConfigDirectory() + u"\\window.ini").value_or(u"");
  }

  WindowHarness harness;
  SearchView& view = harness.app.search;
};

TEST_F(SearchControls, APresetFiltersBringsItsControlsAndIsKept) {
  EXPECT_FALSE(IsPlaced(kSizeBox));
  const Effects effects = Choose(kSizePreset, kCustomSize);
  EXPECT_TRUE(effects.relayout);
  EXPECT_EQ(effects.dirty, harness.Context().client);
  EXPECT_EQ(harness.engine.filtered, 1);
  EXPECT_TRUE(IsPlaced(kSizeBox));
  EXPECT_TRUE(IsPlaced(kSizeUnit));
  EXPECT_FALSE(IsPlaced(kDateFrom));
  EXPECT_NE(Saved().find(u"sizePreset=4"), std::u16string::npos) << "a crash does not lose it";
  (void)Choose(kTimePreset, kCustomTime);
  EXPECT_TRUE(IsPlaced(kDateFrom));
  EXPECT_TRUE(IsPlaced(kDateTo));
  (void)Choose(kSizePreset, -1);
  EXPECT_EQ(CurrentWindowSettings.sizePreset, 0);
  EXPECT_FALSE(IsPlaced(kSecondSizeBox)) << "never";
}

TEST_F(SearchControls, ARangeFiltersOnlyWhereItsPresetIsChosen) {
  (void)Type(kSizeBox, u"1-7");
  (void)Choose(kSizeUnit, 3);
  (void)Report({.kind = ControlEvent::kDay, .id = kDateFrom, .value = 20'250'102});
  EXPECT_EQ(harness.engine.filtered, 0);
  EXPECT_EQ(CurrentWindowSettings.sizeRange, u"1-7");
  EXPECT_EQ(CurrentWindowSettings.sizeUnit, 3);
  EXPECT_EQ(CurrentWindowSettings.timeStart, 20'250'102);
  CurrentWindowSettings.sizePreset = kCustomSize;
  CurrentWindowSettings.timePreset = kCustomTime;
  (void)Type(kSizeBox, u"2-7");
  (void)Choose(kSizeUnit, -1);
  (void)Report({.kind = ControlEvent::kDay, .id = kDateTo, .value = 20'250'304});
  (void)Type(kSecondSizeBox, u"0-7");
  EXPECT_EQ(harness.engine.filtered, 4);
  EXPECT_EQ(CurrentWindowSettings.sizeUnit, 2);
}

// A field without a day of its own reports that of the system as soon as it is made.
TEST_F(SearchControls, DaysOfAWindowThatHasNoSizeYetFilterNothing) {
  CurrentWindowSettings.timePreset = kCustomTime;
  harness.app.clientWidth = harness.app.clientHeight = 0;
  (void)Report({.kind = ControlEvent::kDay, .id = kDateFrom, .value = 20'250'102});
  EXPECT_EQ(CurrentWindowSettings.timeStart, 20'250'102);
  EXPECT_EQ(harness.engine.filtered, 0);
}

TEST_F(SearchControls, ATagIsChosenByItsNumber) {
  view.Controls();
  (void)Report({.kind = ControlEvent::kClicked, .id = kFirstTag + 2});
  EXPECT_EQ(TheSearch().ActiveCategory, 2);
}

TEST_F(SearchControls, TellOfUnknownOnesThatNobodyTookThem) {
  EXPECT_FALSE(Type(199, u"x").isTaken);
  EXPECT_FALSE(Choose(199, 1).isTaken);
}

// A program that writes into the box tells nobody.
TEST_F(SearchControls, WhatAScriptHasWrittenIsReadWhenADriveComes) {
  Engine().ready = true;
  harness.window.texts[kQueryBox] = u"needle";
  EXPECT_EQ(TheSearch().hooks.readSearchBox(), u"needle");
}

TEST_F(SearchControls, ACountMovesTheTagsAndLeavesTheListAlone) {
  view.Controls();
  view.Layout(harness.Context());
  harness.engine.counts.byCategory = {12};
  view.filterCountsPending = true;
  const Effects effects = view.OnTimer(kTimerFilterCounts, harness.Context());
  EXPECT_TRUE(effects.placesControls);
  EXPECT_FALSE(effects.relayout) << "the bar is as high as before";
  EXPECT_TRUE(harness.window.texts[kFirstTag].ends_with(u"(12)"));
}

TEST_F(SearchControls, ACountThatMakesTheBarHigherLaysAllOut) {
  view.Controls();
  view.Layout(harness.Context());
  harness.app.clientWidth = 900;
  harness.engine.counts.byCategory.assign(8, 1'000'000'000'000);
  view.filterCountsPending = true;
  const Effects effects = view.OnTimer(kTimerFilterCounts, harness.Context());
  EXPECT_TRUE(effects.relayout);
  EXPECT_EQ(effects.dirty, harness.Context().client);
}

}  // namespace
}  // namespace quilmark
