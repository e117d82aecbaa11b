#include "platform/text_file.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/files.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

using namespace std::string_literals;

std::vector<std::u16string> LinesOf(std::u16string_view text) {
  std::vector<std::u16string> pieces;
  TextLines lines{text};
  while (const auto line = NextLine(lines)) pieces.emplace_back(*line);
  return pieces;
}

TEST(DecodeText, SkipsAUtf8Mark) {
  EXPECT_EQ(DecodeText("\xEF\xBB\xBFlang=de\n"), u"lang=de\n");
  EXPECT_EQ(DecodeText("\xEF\xBB\xBF"), u"");
  EXPECT_EQ(DecodeText(""), u"");
}

TEST(DecodeText, ReadsUtf8WithoutAMark) {
  EXPECT_EQ(DecodeText("\xC3\xA9=\xF0\x9F\x8E\x89"), u"\u00E9=\U0001F389");
}

TEST(DecodeText, SkipsOneMarkOnly) { EXPECT_EQ(DecodeText("\xEF\xBB\xBF\xEF\xBB\xBFq"), u"\uFEFFq"); }

TEST(DecodeText, ReadsUtf16BehindItsMark) {
  EXPECT_EQ(DecodeText("\xFF\xFE"
                       "a\0\x60\x4F\r\0\n\0"s),
            u"a\u4F60\n");
  EXPECT_EQ(DecodeText("\xFF\xFE"), u"");
}

TEST(DecodeText, ReplacesTheOddByteAtTheEndOfUtf16) {
  EXPECT_EQ(DecodeText("\xFF\xFE"
                       "a\0b"s),
            u"a\uFFFD");
}

TEST(DecodeText, ReplacesEachMalformedByte) { EXPECT_EQ(DecodeText("a=\xFF\xFE"), u"a=\uFFFD\uFFFD"); }

TEST(DecodeText, JoinsCrLfAndKeepsALoneCr) {
  EXPECT_EQ(DecodeText("a\r\nb\n\rc\r\r\n\r"), u"a\nb\n\rc\r\n\r");
}

TEST(EncodeTextLines, PutsACrBeforeEachLf) {
  EXPECT_EQ(EncodeTextLines(u"a\nb\n"), "a\r\nb\r\n");
  EXPECT_EQ(EncodeTextLines(u"a\r\n"), "a\r\r\n");
  EXPECT_EQ(EncodeTextLines(u""), "");
}

TEST(EncodeTextLines, GivesUtf8) {
  EXPECT_EQ(EncodeTextLines(u"\u00E9\U0001F389"), "\xC3\xA9\xF0\x9F\x8E\x89");
  EXPECT_EQ(EncodeTextLines(std::u16string{0xD83C}), "\xEF\xBF\xBD");
}

TEST(NextLine, CutsAtAnotherLimit) {
  TextLines lines{u"abcd\nef\n", 0, 3};
  EXPECT_EQ(NextLine(lines), u"abc");
  EXPECT_EQ(NextLine(lines), u"d\n");
  EXPECT_EQ(NextLine(lines), u"ef\n");
  EXPECT_FALSE(NextLine(lines).has_value());
}

TEST(NextLine, KeepsTheLineEnd) {
  EXPECT_EQ(LinesOf(u"a\n\nb"), (std::vector<std::u16string>{u"a\n", u"\n", u"b"}));
  EXPECT_EQ(LinesOf(u""), std::vector<std::u16string>{});
  EXPECT_EQ(LinesOf(u"\n"), std::vector<std::u16string>{u"\n"});
}

TEST(NextLine, CutsALongLineIntoPieces) {
  const std::u16string line(600, u'x');
  EXPECT_EQ(LinesOf(line + u"\nb"),
            (std::vector<std::u16string>{std::u16string(255, u'x'), std::u16string(255, u'x'),
                                         std::u16string(90, u'x') + u"\n", u"b"}));
}

TEST(NextLine, CountsTheLineEndAmongTheUnitsOfALine) {
  EXPECT_EQ(LinesOf(std::u16string(254, u'x') + u"\nb"),
            (std::vector<std::u16string>{std::u16string(254, u'x') + u"\n", u"b"}));
  EXPECT_EQ(LinesOf(std::u16string(255, u'x') + u"\nb"),
            (std::vector<std::u16string>{std::u16string(255, u'x'), u"\n", u"b"}));
}

TEST(TrimText, TakesLineEndsOffTheRightOnly) {
  EXPECT_EQ(TrimText(u" \t a b \t\r\n"), u"a b");
  EXPECT_EQ(TrimText(u"\r\na"), u"\r\na");
  EXPECT_EQ(TrimText(u" \t\r\n"), u"");
  EXPECT_EQ(TrimText(u""), u"");
}

TEST(SplitKeyValue, SplitsAtTheFirstEqualsSign) {
  const auto pair = SplitKeyValue(u"  key \t=\t a=b \r\n");
  ASSERT_TRUE(pair.has_value());
  EXPECT_EQ(pair->key, u"key");
  EXPECT_EQ(pair->value, u"a=b");
}

TEST(SplitKeyValue, TakesAnEmptyKeyAndAnEmptyValue) {
  const auto pair = SplitKeyValue(u"=\n");
  ASSERT_TRUE(pair.has_value());
  EXPECT_EQ(pair->key, u"");
  EXPECT_EQ(pair->value, u"");
}

TEST(SplitKeyValue, PassesOverALineWithoutAnEqualsSign) {
  EXPECT_FALSE(SplitKeyValue(u"# a remark\n").has_value());
  EXPECT_FALSE(SplitKeyValue(u"").has_value());
}

TEST(ParseInt, ReadsDigitsBehindBlanksAndASign) {
  EXPECT_EQ(ParseInt(u"42"), 42);
  EXPECT_EQ(ParseInt(u" \t\r\n+7"), 7);
  EXPECT_EQ(ParseInt(u"-15"), -15);
  EXPECT_EQ(ParseInt(u"0012"), 12);
}

TEST(ParseInt, StopsAtTheFirstOtherUnit) {
  EXPECT_EQ(ParseInt(u"12px"), 12);
  EXPECT_EQ(ParseInt(u"1.9"), 1);
  EXPECT_EQ(ParseInt(u"0x10"), 0);
}

TEST(ParseInt, GivesZeroForWhatIsNoNumber) {
  for (const std::u16string_view text : {u"", u" ", u"-", u"+-5", u"- 5", u"abc", u"\u0664"}) {
    EXPECT_EQ(ParseInt(text), 0);
  }
}

TEST(ParseInt, ClampsToThirtyTwoBits) {
  EXPECT_EQ(ParseInt(u"2147483647"), 2'147'483'647);
  EXPECT_EQ(ParseInt(u"2147483648"), 2'147'483'647);
  EXPECT_EQ(ParseInt(u"-2147483648"), -2'147'483'647 - 1);
  EXPECT_EQ(ParseInt(u"-2147483649"), -2'147'483'647 - 1);
  EXPECT_EQ(ParseInt(std::u16string(300, u'9')), 2'147'483'647);
}

TEST(WriteTextFile, PutsAMarkInFrontAndRewritesTheWholeFile) {
  const ScratchFolder folder;
  const std::u16string path = folder.PathOf(u"settings.ini");
  ASSERT_TRUE(WriteTextFile(path, u"first=a long line\nsecond=2\n"));
  ASSERT_TRUE(WriteTextFile(path, u"lang=\u00E9\n"));
  EXPECT_EQ(ReadFileBytes(path), "\xEF\xBB\xBFlang=\xC3\xA9\r\n");
}

TEST(WriteTextFile, FailsWhereTheFolderIsMissing) {
  const ScratchFolder folder;
  EXPECT_FALSE(WriteTextFile(folder.PathOf(u"missing\\settings.ini"), u"a=1\n"));
}

TEST(AppendTextFile, PutsAMarkInFrontOfANewOrEmptyFileOnly) {
  const ScratchFolder folder;
  const std::u16string path = folder.PathOf(u"log.txt");
  ASSERT_TRUE(AppendTextFile(path, u"one\n"));
  ASSERT_TRUE(AppendTextFile(path, u"two\n"));
  EXPECT_EQ(ReadFileBytes(path), "\xEF\xBB\xBFone\r\ntwo\r\n");

  const std::u16string empty = folder.PathOf(u"empty.txt");
  ASSERT_TRUE(WriteFileBytes(empty, ""));
  ASSERT_TRUE(AppendTextFile(empty, u"one\n"));
  EXPECT_EQ(ReadFileBytes(empty), "\xEF\xBB\xBFone\r\n");
}

TEST(AppendTextFile, AddsNoMarkToAFileThatHasNone) {
  const ScratchFolder folder;
  const std::u16string path = folder.PathOf(u"log.txt");
  ASSERT_TRUE(WriteFileBytes(path, "zero\r\n"));
  ASSERT_TRUE(AppendTextFile(path, u"one\n"));
  EXPECT_EQ(ReadFileBytes(path), "zero\r\none\r\n");
}

TEST(ReadTextFile, GivesBackWhatWasWritten) {
  const ScratchFolder folder;
  const std::u16string path = folder.PathOf(u"settings.ini");
  ASSERT_TRUE(WriteTextFile(path, u"a=\U0001F389\n\nb=\u4F60"));
  EXPECT_EQ(ReadTextFile(path), u"a=\U0001F389\n\nb=\u4F60");
}

TEST(ReadTextFile, IsEmptyWithoutAFile) {
  const ScratchFolder folder;
  EXPECT_EQ(ReadTextFile(folder.PathOf(u"missing.ini")), std::nullopt);
}

}  // namespace
}  // namespace quilmark
