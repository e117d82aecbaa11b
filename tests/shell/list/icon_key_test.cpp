#include "shell/list/icon_key.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

TEST(IconKey, IsThatOfAKnownPath) {
  // By hand: (((start ^ 'a') * prime ^ 0) * prime) ^ 16 << 48.
  uint64_t hash = 0x14650fb0739d0383;
  hash = (hash ^ 0x61) * 0x100000001b3;
  hash = hash * 0x100000001b3;
  EXPECT_EQ(IconKeyOf({.path = u"a", .size = 16}), hash ^ (uint64_t{16} << 48));
  hash = (hash ^ 0x2D) * 0x100000001b3;  // U+4E2D
  hash = (hash ^ 0x4E) * 0x100000001b3;
  EXPECT_EQ(IconKeyOf({.path = u"a\u4E2D", .size = 48}), hash ^ (uint64_t{48} << 48));
}

TEST(IconKey, TellsKindsAndSizesApart) {
  const uint64_t plain = IconKeyOf({.path = u"C:\\a.png"});
  EXPECT_EQ(IconKeyOf({.path = u"C:\\a.png", .typeOnly = true}), plain ^ 0x8000000000000000);
  EXPECT_EQ(IconKeyOf({.path = u"C:\\a.png", .thumbnail = true}), plain ^ 0x4000000000000000);
  EXPECT_EQ(PlainKeyOf(IconKeyOf({.path = u"C:\\a.png", .thumbnail = true})), plain);
  EXPECT_NE(IconKeyOf({.path = u"C:\\a.png", .size = 48}), plain);
  for (const int size : {0, -1, -48}) EXPECT_EQ(IconKeyOf({.path = u"C:\\a.png", .size = size}), plain);
}

TEST(IconKey, IsTheSameForBothCasesOfLatinLettersAlone) {
  EXPECT_EQ(IconKeyOf({.path = u"C:\\ABZ.PNG"}), IconKeyOf({.path = u"c:\\abz.png"}));
  EXPECT_NE(IconKeyOf({.path = u"\u0416"}), IconKeyOf({.path = u"\u0436"}));
  EXPECT_NE(IconKeyOf({.path = u"@["}), IconKeyOf({.path = u"`{"}));
}

TEST(DriveRoot, IsALetterAndAColonWithAtMostOneSlash) {
  for (const std::u16string_view path : {u"C:", u"c:\\", u"Z:/", u"a:"}) EXPECT_TRUE(IsDriveRoot(path));
  for (const std::u16string_view path :
       {u"", u"C", u"C:\\\\", u"C:a", u"1:", u"1:\\", u"::", u"\\\\a", u"C:\\a", u"\u00C4:"}) {
    EXPECT_FALSE(IsDriveRoot(path));
  }
}

}  // namespace
}  // namespace quilmark
