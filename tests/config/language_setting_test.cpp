#include "config/language_setting.h"

#include <gtest/gtest.h>

#include "config/scratch_config.h"
#include "platform/files.h"

namespace quilmark {
namespace {

TEST(ReadLanguageSetting, GivesTheTextAsItStands) {
  EXPECT_EQ(ReadLanguageSetting(u" lang = ZH \n"), u"ZH");
  EXPECT_EQ(ReadLanguageSetting(u"other=1\nlang=de-de"), u"de-de");
}

TEST(ReadLanguageSetting, StopsAtTheFirstKey) {
  EXPECT_EQ(ReadLanguageSetting(u"lang=\nlang=fr-fr\n"), u"");
  EXPECT_EQ(ReadLanguageSetting(u"lang=de-de\nlang=fr-fr\n"), u"de-de");
}

TEST(ReadLanguageSetting, IsEmptyWithoutTheKey) {
  EXPECT_EQ(ReadLanguageSetting(u"Lang=de-de\nlanguage=fr\nlang\n"), u"");
  EXPECT_EQ(ReadLanguageSetting(u""), u"");
}

TEST(LoadLanguageSetting, IsEmptyWithoutAFile) {
  const ScratchConfig config;
  EXPECT_EQ(LoadLanguageSetting(), u"");
}

TEST(SaveLanguageSetting, RewritesTheFileThatLoadReads) {
  const ScratchConfig config;
  SaveLanguageSetting(u"pt-br-long");
  SaveLanguageSetting(u"ja-jp");
  EXPECT_EQ(ReadFileBytes(config.folder.PathOf(u"language.ini")), "\xEF\xBB\xBFlang=ja-jp\r\n");
  EXPECT_EQ(LoadLanguageSetting(), u"ja-jp");
}

}  // namespace
}  // namespace quilmark
