#include "config/settings_lines.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quilmark {
namespace {

std::vector<std::u16string> PairsOf(std::u16string_view text) {
  std::vector<std::u16string> pairs;
  TextLines lines{text};
  while (const auto pair = NextKeyValue(lines)) {
    pairs.push_back(std::u16string(pair->key) + u"|" + std::u16string(pair->value));
  }
  return pairs;
}

TEST(NextKeyValue, PassesOverLinesWithoutAnEqualsSign) {
  EXPECT_EQ(PairsOf(u"[section]\n\n a = 1 \nnoise\nb=2"), (std::vector<std::u16string>{u"a|1", u"b|2"}));
}

TEST(NextKeyValue, LosesTheRestOfALineThatIsTooLong) {
  const std::u16string value(300, u'v');
  EXPECT_EQ(PairsOf(u"key=" + value + u"\nnext=1\n"),
            (std::vector<std::u16string>{u"key|" + value.substr(0, 251), u"next|1"}));
}

TEST(NextKeyValue, TakesAPairInTheRestOfALineThatIsTooLong) {
  EXPECT_EQ(PairsOf(u"key=" + std::u16string(251, u'v') + u"w=1\n"),
            (std::vector<std::u16string>{u"key|" + std::u16string(251, u'v'), u"w|1"}));
}

}  // namespace
}  // namespace quilmark
