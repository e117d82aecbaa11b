#include "shell/app/hotkey_text.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

std::u16string NoName(uint32_t) { return {}; }
std::u16string NameOfF2(uint32_t key) { return key == 113 ? u"F2" : u""; }

TEST(HotkeyText, NamesModifiersInOneOrder) {
  EXPECT_EQ(HotkeyDisplayText(1, u'Z', NoName), u"Alt+Z");
  EXPECT_EQ(HotkeyDisplayText(15, u'7', NoName), u"Ctrl+Alt+Shift+Win+7");
  EXPECT_EQ(HotkeyDisplayText(0, u'A', NoName), u"A");
}

TEST(HotkeyText, TakesTheKeyboardsNameOfAKey) {
  EXPECT_EQ(HotkeyDisplayText(2, 113, NameOfF2), u"Ctrl+F2");
  EXPECT_EQ(HotkeyDisplayText(2, 0xFF, NameOfF2), u"Ctrl+???");
}

TEST(HotkeyText, StandsInTheTipOfTheTrayIcon) {
  EXPECT_EQ(TrayTipText(u"Quilmark - {0} Show/Hide", u"Alt+Z"), u"Quilmark - Alt+Z Show/Hide");
  EXPECT_EQ(TrayTipText(u"Quilmark", u"Alt+Z"), u"Quilmark Alt+Z");
  EXPECT_EQ(TrayTipText(std::u16string(200, u'x'), u"Alt+Z"), std::u16string(127, u'x'));
}

}  // namespace
}  // namespace quilmark
