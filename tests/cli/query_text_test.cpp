#include "cli/query_text.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

TEST(QueryText, BackslashesAreTheQueryLanguages) {
  EXPECT_EQ(QueryTextOf(R"(a\ and b)"), uR"(a\ and b)");
  EXPECT_EQ(QueryTextOf(R"(C:\sub)"), uR"(C:\sub)");
}

TEST(QueryText, BlanksAtTheEndsAreLeftOut) {
  EXPECT_EQ(QueryTextOf(" \ta b\r"), u"a b");
  EXPECT_EQ(QueryTextOf(" "), u"");
}

TEST(QueryText, BytesThatAreNoUtf8StandAsTheyDoInNames) {
  EXPECT_EQ(QueryTextOf("bad\xFF"), (std::u16string{u'b', u'a', u'd', 0xDCFF}));
}

TEST(QueryText, ContentQueryIsToldByItsPrefixAndItsTerms) {
  EXPECT_TRUE(IsContentQuery("s:word"));
  EXPECT_TRUE(IsContentQuery(" s:word|txt"));
  for (const char* const text : {"s:", "S:word", "word s:x", "s:|txt", ""}) {
    EXPECT_FALSE(IsContentQuery(text)) << text;
  }
}

}  // namespace
}  // namespace quilmark
