#include "config/settings_file.h"

#include <gtest/gtest.h>

#include "config/config_directory.h"
#include "config/scratch_config.h"
#include "platform/text_file.h"

namespace quilmark {
namespace {

TEST(SettingsFile, IsReadBackAsItWasWritten) {
  const ScratchConfig config;
  const std::u16string text = u"key=value\nname=\u6587\u4EF6\n";
  EXPECT_TRUE(WriteSettingsFile(u"some.ini", text));
  EXPECT_EQ(ReadSettingsFile(u"some.ini"), text);
  EXPECT_EQ(ReadTextFile(ConfigPath(u"some.ini")), text);
  EXPECT_FALSE(IsUnreadSettingsFile(u"some.ini"));
}

TEST(SettingsFile, OneThatIsNotThereIsEmptyAndMayBeWritten) {
  const ScratchConfig config;
  EXPECT_EQ(ReadSettingsFile(u"missing.ini"), u"");
  EXPECT_FALSE(IsUnreadSettingsFile(u"missing.ini"));
  EXPECT_TRUE(WriteSettingsFile(u"missing.ini", u"key=value\n", Flushing::kLeftToSystem));
  EXPECT_EQ(ReadSettingsFile(u"missing.ini"), u"key=value\n");
}

TEST(SettingsFile, AFolderOfThatNameCannotBeWritten) {
  const ScratchConfig config;
  ASSERT_TRUE(MakeFolder(ConfigPath(u"some.ini")));
  EXPECT_EQ(ReadSettingsFile(u"some.ini"), u"");
  EXPECT_FALSE(WriteSettingsFile(u"some.ini", u"key=value\n"));
}

// The user may change it beside the program.
TEST(SettingsFile, ATextThatTheFileHasNoLongerIsWrittenAgain) {
  const ScratchConfig config;
  EXPECT_TRUE(WriteSettingsFile(u"some.ini", u"a=1\n"));
  ASSERT_TRUE(WriteTextFile(ConfigPath(u"some.ini"), u"a=2\n"));
  EXPECT_TRUE(WriteSettingsFile(u"some.ini", u"a=1\n"));
  EXPECT_EQ(ReadSettingsFile(u"some.ini"), u"a=1\n");
}

}  // namespace
}  // namespace quilmark
