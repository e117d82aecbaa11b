#include "shell/search/scope_items.h"

#include <gtest/gtest.h>

#include "search/results/search_pipeline.h"
#include "shell/window_harness.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

using Texts = std::vector<std::u16string>;

// C: and E: with a file "x" each; E: is chosen.
class ScopeBox : public testing::Test {
 protected:
  ScopeBox() {
    Add(u"C:");
    Add(u"E:");
    Renew();
    ChooseScope(app_.search, kScopeFirstVolume + 1);
  }

  VolumeIndex& Add(std::u16string_view drive) {
    auto volume = MakeTestVolume(drive);
    AddFile(*volume, u"x");
    return *AddVolume(Engine(), std::move(volume));
  }
  Texts Renew() { return RenewScopeItems(app_.search, Engine()); }
  Texts Found() {
    DoSearchAsync(u"x", false, false);
    harness_.search.KindsUntilFinal();
    return harness_.search.ShownPaths();
  }

  WindowHarness harness_;
  AppState& app_ = harness_.app;
};

TEST_F(ScopeBox, NamesAllTheDesktopAndTheDrives) {
  EXPECT_EQ(Renew(), (Texts{u"All", u"Desktop", u"C:", u"E:"}));
  EXPECT_EQ(TheSearch().scope.scopeIndex, kScopeFirstVolume + 1);
}

TEST_F(ScopeBox, ADriveThatJoinsBeforeTheChosenOneMovesItsPlace) {
  Add(u"D:");
  EXPECT_EQ(Found(), Texts{u"E:\\x"}) << "before the box has heard of it";
  EXPECT_EQ(Renew(), (Texts{u"All", u"Desktop", u"C:", u"D:", u"E:"}));
  EXPECT_EQ(TheSearch().scope.scopeIndex, kScopeFirstVolume + 2);
  EXPECT_EQ(Found(), Texts{u"E:\\x"});
}

TEST_F(ScopeBox, TheChoiceIsWhatTheBoxShows) {
  Add(u"A:");  // the box has not heard of it
  ChooseScope(app_.search, kScopeFirstVolume);
  EXPECT_EQ(Found(), Texts{u"C:\\x"});
  Renew();
  EXPECT_EQ(TheSearch().scope.scopeIndex, kScopeFirstVolume + 1);
}

TEST_F(ScopeBox, ADriveThatLeavesTakesTheChoiceToAll) {
  Engine().volumes.erase(Engine().volumes.begin());
  Renew();
  EXPECT_EQ(TheSearch().scope.scopeIndex, kScopeFirstVolume);
  Engine().volumes.back()->valid = false;  // pulled; a volume stays in the list
  Renew();
  EXPECT_EQ(TheSearch().scope.scopeIndex, kScopeAll);
}

TEST_F(ScopeBox, TheDesktopStaysChosen) {
  ChooseScope(app_.search, kScopeDesktop);
  Add(u"D:");
  Renew();
  EXPECT_EQ(TheSearch().scope.scopeIndex, kScopeDesktop);
}

}  // namespace
}  // namespace quilmark
