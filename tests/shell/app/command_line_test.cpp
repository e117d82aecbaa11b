#include "shell/app/command_line.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

using Arguments = std::vector<std::u16string>;

TEST(CommandLine, AsksForAHiddenStartInAnyCase) {
  for (const auto* word : {u"-hidden", u"/hidden", u"-HIDDEN", u"/Hidden"}) {
    EXPECT_TRUE(WantsHiddenStart(Arguments{u"Quilmark.exe", word}));
    EXPECT_TRUE(WantsHiddenStart(Arguments{u"Quilmark.exe", u"other", word}));
  }
}

TEST(CommandLine, TakesNoOtherWord) {
  for (const auto* word : {u"hidden", u"--hidden", u"-hiddenx", u" -hidden", u""}) {
    EXPECT_FALSE(WantsHiddenStart(Arguments{u"Quilmark.exe", word}));
  }
  EXPECT_FALSE(WantsHiddenStart(Arguments{u"-hidden"}));  // the program itself
  EXPECT_FALSE(WantsHiddenStart(Arguments{}));
}

TEST(CommandLine, FindsTheWordsInATextThatCannotBeSplit) {
  EXPECT_TRUE(WantsHiddenStart(std::u16string_view(u"--HIDDEN")));
  EXPECT_TRUE(WantsHiddenStart(std::u16string_view(u"\"x /hidden")));
  EXPECT_FALSE(WantsHiddenStart(std::u16string_view(u"hidden")));
}

}  // namespace
}  // namespace quilmark
