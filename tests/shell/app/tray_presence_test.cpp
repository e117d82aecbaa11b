#include "shell/app/tray_presence.h"

#include <gtest/gtest.h>

#include <string>

namespace quilmark {
namespace {

// A notification area: it holds the icon or not, and may answer "no" to what it has done.
struct Area {
  bool Take(TrayCall call) {
    calls += call == TrayCall::kAdd ? 'A' : 'M';
    if (!takes) return false;
    const bool fits = (call == TrayCall::kAdd) != hasIcon;
    hasIcon = hasIcon || fits;
    if (lateAnswers > 0) return --lateAnswers, false;
    return fits;
  }
  TrayIconState Put(bool isAdded) {
    return PutTrayIcon(isAdded, [this](TrayCall call) { return Take(call); });
  }

  bool hasIcon = false, takes = true;
  int lateAnswers = 0;
  std::string calls;
};

TEST(TrayPresence, AnIconIsAddedAndGivenItsTip) {
  Area area;
  EXPECT_EQ(area.Put(false), TrayIconState::kPut);
  EXPECT_EQ(area.calls, "AM");
}

TEST(TrayPresence, AnIconThatIsThereTakesItsTip) {
  Area area{.hasIcon = true};
  EXPECT_EQ(area.Put(true), TrayIconState::kStood);
  EXPECT_EQ(area.calls, "M");
}

TEST(TrayPresence, AnIconThatTheShellHasLostIsAddedAgain) {
  Area area;
  EXPECT_EQ(area.Put(true), TrayIconState::kPut);
  EXPECT_TRUE(area.hasIcon);
}

TEST(TrayPresence, AnIconThatNobodyTakesIsNotThere) {
  Area area{.takes = false};
  EXPECT_EQ(area.Put(true), TrayIconState::kAbsent);
  EXPECT_EQ(area.Put(false), TrayIconState::kAbsent);
}

// Added again by mistake: the shell refuses, and the icon stands.
TEST(TrayPresence, AnIconThatIsThereThoughAddingFailsCounts) {
  Area area{.hasIcon = true};
  EXPECT_EQ(area.Put(false), TrayIconState::kStood);
}

TEST(TrayPresence, AShellThatAnswersTooLateHasTheIcon) {
  Area area{.lateAnswers = 1};
  EXPECT_NE(area.Put(false), TrayIconState::kAbsent);
  EXPECT_TRUE(area.hasIcon);
}

}  // namespace
}  // namespace quilmark
