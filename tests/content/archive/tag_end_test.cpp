#include "content/archive/tag_end.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "platform/utf.h"

namespace quilmark {
namespace {

size_t SlowEnd(const std::string& text) {
  char quote = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (quote != 0) {
      if (c == quote) quote = 0;
    } else if (c == '>') {
      return i;
    } else if (c == '"' || c == '\'') {
      quote = c;
    }
  }
  return text.size();
}

size_t EndIn(const std::string& text) {
  return static_cast<size_t>(FindTagEnd(text.data(), text.data() + text.size()) - text.data());
}

TEST(TagEnd, StandsOutsideOfQuotes) {
  EXPECT_EQ(EndIn("a>"), 1u);
  EXPECT_EQ(EndIn("a='>'>"), 5u);
  EXPECT_EQ(EndIn("a=\"'>\">"), 6u);
  EXPECT_EQ(EndIn("a=\">"), 4u);
  EXPECT_EQ(EndIn(""), 0u);
}

TEST(TagEnd, IsTheSameInBlocks) {
  std::mt19937 random(5);
  for (int i = 0; i < 30'000; ++i) {
    std::string text(random() % 70, 'x');
    const unsigned rarity = 2 + random() % 20;
    for (char& c : text) {
      if (random() % rarity == 0) c = "\"\"\"><'"[random() % (i % 3 == 0 ? 6 : i % 3 == 1 ? 5 : 4)];
    }
    ASSERT_EQ(EndIn(text), SlowEnd(text)) << text;
    const size_t first = text.find('>');
    const bool isPlain = SlowEnd(text) == first && text.find('<') > first;
    const char* const plainEnd = FindPlainTagEnd(text.data(), text.data() + text.size());
    ASSERT_EQ(plainEnd, isPlain && first != text.npos ? text.data() + first : nullptr) << text;
    const std::u16string wide = FromUtf8(text);
    ASSERT_EQ(static_cast<size_t>(FindTagEnd(wide.data(), wide.data() + wide.size()) - wide.data()),
              SlowEnd(text));
  }
}

}  // namespace
}  // namespace quilmark
