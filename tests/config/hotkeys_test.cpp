#include "config/hotkeys.h"

#include <gtest/gtest.h>

#include "config/scratch_config.h"
#include "platform/files.h"

namespace quilmark {
namespace {

TEST(ReadHotkeys, KeepsDefaultsForMissingKeys) {
  EXPECT_EQ(ReadHotkeys(u""), (HotkeyConfig{1, 90, 6, 79}));
  EXPECT_EQ(ReadHotkeys(u"fg_key=80\n"), (HotkeyConfig{1, 90, 6, 80}));
}

TEST(ReadHotkeys, TrimsLinesKeysAndValues) {
  EXPECT_EQ(ReadHotkeys(u"  modifiers\t= 3 \n key =65\nfg_modifiers=9\nfg_key=66"),
            (HotkeyConfig{3, 65, 9, 66}));
}

TEST(ReadHotkeys, ComparesKeysExactly) {
  EXPECT_EQ(ReadHotkeys(u"Modifiers=3\nkeys=65\nfgkey=66\n"), HotkeyConfig{});
}

TEST(ReadHotkeys, ReadsWhatIsNoNumberAsZero) {
  EXPECT_EQ(ReadHotkeys(u"modifiers=alt\nkey=\n"), (HotkeyConfig{0, 0, 6, 79}));
}

TEST(ReadHotkeys, WrapsANegativeNumber) { EXPECT_EQ(ReadHotkeys(u"key=-1\n").showKey, 0xFFFF'FFFFu); }

TEST(HotkeysText, HasOneLineAKey) {
  EXPECT_EQ(HotkeysText({3, 65, 9, 4'294'967'295}),
            u"modifiers=3\nkey=65\nfg_modifiers=9\nfg_key=4294967295\n");
}

// Whoever holds the key sees the window come once, not flicker. The file keeps what it kept.
TEST(ModifiersToRegister, LetAHeldKeyCountOnce) {
  EXPECT_EQ(ModifiersToRegister(6), 0x4006u);
  EXPECT_EQ(ModifiersToRegister(0x4001), 0x4001u);
}

TEST(LoadHotkeys, GivesDefaultsWithoutAFile) {
  const ScratchConfig config;
  EXPECT_EQ(LoadHotkeys(), HotkeyConfig{});
}

TEST(SaveHotkeys, WritesTheFileThatLoadReads) {
  const ScratchConfig config;
  SaveHotkeys({3, 65, 9, 66});
  EXPECT_EQ(ReadFileBytes(config.folder.PathOf(u"hotkey.ini")),
            "\xEF\xBB\xBFmodifiers=3\r\nkey=65\r\nfg_modifiers=9\r\nfg_key=66\r\n");
  EXPECT_EQ(LoadHotkeys(), (HotkeyConfig{3, 65, 9, 66}));
}

}  // namespace
}  // namespace quilmark
