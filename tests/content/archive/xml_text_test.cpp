#include "content/archive/xml_text.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>

#include "content/archive/xml_reference.h"
#include "platform/utf.h"

namespace quilmark {
namespace {

const WorkCheck kGoesOn(Ticket::Unlimited());

// Each extraction into room of exactly the allowed size, and once more in the part's own place.
std::u16string Wide(std::u16string_view xml) {
  const auto room = std::make_unique<char16_t[]>(xml.size());
  std::u16string text(ExtractRunTextWide(xml, room.get(), kGoesOn));
  std::u16string own(xml);
  EXPECT_EQ(ExtractRunTextWide(own, own.data(), kGoesOn), text);
  return text;
}
using ByteExtractor = std::string_view (*)(std::string_view, char*, const WorkCheck&);
std::string Extracted(ByteExtractor extract, std::string_view xml) {
  const auto room = std::make_unique<char[]>(xml.size());
  std::string text(extract(xml, room.get(), kGoesOn));
  std::string own(xml);
  EXPECT_EQ(extract(own, own.data(), kGoesOn), text);
  return text;
}
std::string Bytes(std::string_view xml) { return Extracted(ExtractRunTextBytes, xml); }
std::string Strip(std::string_view xml) { return Extracted(StripAllTagsBytes, xml); }

TEST(XmlText, JoinsAWordOfTwoRuns) {
  EXPECT_EQ(Wide(u"<w:r><w:t>Hel</w:t></w:r><w:r><w:t>lo</w:t></w:r>"), u"Hello");
  EXPECT_EQ(Bytes("<w:t>Hel</w:t><w:t>lo</w:t>"), "Hello");
  EXPECT_EQ(Strip("<w:t>Hel</w:t><w:t>lo</w:t>"), "Hello");
}

TEST(XmlText, PutsABlankAtBreaks) {
  EXPECT_EQ(Wide(u"<w:t>Hel</w:t></w:r><w:br/><w:r><w:t>lo</w:t>"), u"Hel lo");
  for (const char* name : {"p", "br", "cr", "tab", "tc", "tr", "row", "c", "w:P", "a:Br", "X:y:rOw"}) {
    const std::string xml = "<t>a</t><" + std::string(name) + "/><t>b</t></" + name + "><t>c</t>";
    EXPECT_EQ(Bytes(xml), "a b c") << name;
    EXPECT_EQ(Wide(FromUtf8(xml)), u"a b c") << name;
  }
  for (const char* name : {"pp", "b", "tabs", "rows", "d", "r", "tt", "p2", "br:x", ""}) {
    EXPECT_EQ(Bytes("<t>a</t><" + std::string(name) + "/><t>b</t>"), "ab") << name;
  }
  EXPECT_EQ(Bytes("<p/><br/><t>a</t><p/><br/>"), "a");
}

TEST(XmlText, TakesRunsOfBothNames) {
  EXPECT_EQ(Bytes("x<v>1</v>y<V>2</V>z<x:T q='1'>3</x:t>w<is><t>4</is>5</t>"), "12345");
  EXPECT_EQ(Bytes("<t/>a<t>b<t />c</t>d<t>e"), "be");
  EXPECT_EQ(Bytes("<t>a</ t>b< /t>c< t >d</t>"), "abd");
}

TEST(XmlText, LooksForTheEndOfATagOutsideOfQuotes) {
  EXPECT_EQ(Wide(u"<t a=\"x>y\" b='\">'>in</t>"), u"in");
  EXPECT_EQ(Bytes("<t a=\"x>y\" b='\">'>in</t>"), "in");
  EXPECT_EQ(Bytes("<t>kept</t><p a=\"<t>lost</t>"), "kept");
  EXPECT_EQ(Strip("<p a=\"x>y\">in</p>"), "y\">in");
}

TEST(XmlText, PassesOverCommentsAndSections) {
  const std::string xml = "<?xml?><!-- x --><t>a<![CDATA[b]]>c<!t>d</t>";
  EXPECT_EQ(Bytes(xml), "acd");
  EXPECT_EQ(Wide(FromUtf8(xml)), u"acd");
  EXPECT_EQ(Strip(xml), "abcd");
  EXPECT_EQ(Strip("<![CDATA[ a<b>&amp;\n\tc ]]>d"), "a<b>&amp; c d");
  EXPECT_EQ(Strip("<![CDATA[open"), "open");
  EXPECT_EQ(Strip("a<![CDATA["), "a");
  EXPECT_EQ(Strip("a<![CDATA"), "a");
  EXPECT_EQ(Strip("<p <![CDATA[in]]> q>out"), "inout");
}

TEST(XmlText, ResolvesEntities) {
  const std::string xml = "<t>&lt;&gt;&amp;&quot;&apos;&#65;&#x4E2D;&#X4e2d;</t>";
  EXPECT_EQ(Wide(FromUtf8(xml)), u"<>&\"'A\u4E2D\u4E2D");
  EXPECT_EQ(Bytes(xml), "<>&\"'A\xE4\xB8\xAD\xE4\xB8\xAD");
  EXPECT_EQ(Strip(xml), "<>&\"'A\xE4\xB8\xAD\xE4\xB8\xAD");
  EXPECT_EQ(Bytes("<t>&#x7FF;&#x800;&#xFFFF;&#x10000;&#x10FFFF;&#x110000;</t>"),
            "\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
  EXPECT_EQ(Bytes("<t>a&#0;b&#xD800;c</t>"), std::string("a\0b\xED\xA0\x80"
                                                         "c",
                                                         7));
  EXPECT_EQ(Wide(u"<t>&#0;&#x10000;&#xFFFF;</t>"), u"&#0;&#x10000;\xFFFF");
}

TEST(XmlText, KeepsOrDropsUnknownEntities) {
  EXPECT_EQ(Bytes("<t>a&AMP;b&nbsp;c&;d&#;e&#x;f&#12a;g</t>"), "abcdefg");
  EXPECT_EQ(Wide(u"<t>a&AMP;b&;c</t>"), u"a&AMP;b&;c");
  // Up to the next ";", wherever it stands.
  EXPECT_EQ(Bytes("<t>a & b</t><t>c;d</t>"), "a d");
  EXPECT_EQ(Bytes("<t>a & b</t>"), "a");
  EXPECT_EQ(Strip("a & b</t>c;d"), "a d");
  EXPECT_EQ(Wide(u"<t>a & b</t><t>c;d</t>"), u"a & bc;d");
}

TEST(XmlText, LooksNoFartherThanItIsTold) {
  // ";" 16 positions behind "&", and 17.
  EXPECT_EQ(Wide(u"<t>&#0000000000065;</t>"), u"A");
  EXPECT_EQ(Wide(u"<t>&#00000000000065;</t>"), u"A");
  EXPECT_EQ(Wide(u"<t>&#000000000000065;</t>"), u"&#000000000000065;");
  EXPECT_EQ(Bytes("<t>&#00000000000065;</t>"), "A");
  EXPECT_EQ(Bytes("<t>&#000000000000650;</t>"), "A");  // the first 15 characters count
  EXPECT_EQ(Bytes("<t>&amp............;</t>"), "");
}

TEST(XmlText, MakesOneBlankOfWhiteSpace) {
  EXPECT_EQ(Bytes("<t> a \t\r\n b\v c </t>"), "a b\v c");
  EXPECT_EQ(Wide(u"<t> a \t\v\u3000 b\u00A0\u2003c </t>"), u"a b c");
  EXPECT_EQ(Strip(" a \t<p>\r\n b </p> "), "a b");
  EXPECT_EQ(Bytes("<t>a&#32; b</t>"), "a b");  // what an entity gives is not looked at again
  EXPECT_EQ(Bytes("<t>a &#32;b</t>"), "a  b");
}

TEST(XmlText, TakesTheByteA0ForWhiteSpaceInsideOfACharacter) {
  EXPECT_EQ(Bytes("<t>\xE4\xB8\xA0x</t>"), "\xE4\xB8 x");
  EXPECT_EQ(Strip("\xE4\xB8\xA0x"), "\xE4\xB8 x");
  EXPECT_EQ(Wide(u"<t>\u4E20x</t>"), u"\u4E20x");
}

// Looked through once, and not once for each "<".
TEST(XmlText, EndsSoonWhereTagsHaveNoEnd) {
  const std::string open(8 << 20, '<');
  std::string out(open.size() + 1, '\0');
  EXPECT_EQ(StripAllTagsBytes(open, out.data(), kGoesOn), "");
  EXPECT_EQ(StripAllTagsBytes(open + ">end", out.data(), kGoesOn), "end");
  std::string letters;
  for (int i = 0; i < 1 << 20; ++i) letters += "<a";
  EXPECT_EQ(StripAllTagsBytes(letters + ">b<a", out.data(), kGoesOn), "b");
}

TEST(XmlText, GivesUpWhenTheWorkIsStale) {
  const std::string xml = "<t>text</t>";
  std::string room(xml.size(), '\0');
  const WorkCheck isStale{Ticket()};
  EXPECT_EQ(ExtractRunTextBytes(xml, room.data(), isStale), "");
  EXPECT_EQ(StripAllTagsBytes(xml, room.data(), isStale), "");
  std::u16string wideRoom(xml.size(), u'\0');
  EXPECT_EQ(ExtractRunTextWide(u"<t>text</t>", wideRoom.data(), isStale), u"");
}

TEST(XmlText, WhiteSpaceOfWideTextsIsAList) {
  std::u16string found;
  for (char32_t unit = 0; unit < 0x10000; ++unit) {
    if (IsWideSpace(static_cast<char16_t>(unit))) found.push_back(static_cast<char16_t>(unit));
  }
  EXPECT_EQ(found,
            std::u16string(u"\t\n\v\f\r \u0085\u00A0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006"
                           u"\u2007\u2008\u2009\u200A\u2028\u2029\u202F\u205F\u3000"));
}

// Pieces of XML, good and bad, in any order.
std::string RandomXml(std::mt19937& random) {
  static const std::string kPieces[] = {"<",
                                        ">",
                                        "</",
                                        "/>",
                                        "<t>",
                                        "</t>",
                                        "<w:t xml:space=\"preserve\">",
                                        "<v>",
                                        "</w:T>",
                                        "<t/>",
                                        "<t />",
                                        "<p>",
                                        "</p>",
                                        "<br/>",
                                        "< tab\n/>",
                                        "<row a='>'>",
                                        "<c>",
                                        "<x:y:tc/>",
                                        "<w:rPr><w:b/></w:rPr>",
                                        "\"",
                                        "'",
                                        "<!--",
                                        "-->",
                                        "<?pi?>",
                                        "<![CDATA[",
                                        "]]>",
                                        "]",
                                        "&",
                                        ";",
                                        "&amp;",
                                        "&lt;",
                                        "&#65;",
                                        "&#x4E2D;",
                                        "&#32;",
                                        "&#xD83D;",
                                        "&#0;",
                                        "&#x1F600;",
                                        "&#99999999;",
                                        "&bogus;",
                                        "&#0000000000000065;",
                                        " ",
                                        "  ",
                                        "\t",
                                        "\r\n",
                                        "\v",
                                        "\xA0",
                                        "\xC2\xA0",
                                        "\xE3\x80\x80",
                                        "\xE4\xB8\xA0",
                                        "\xE4\xB8\xAD",
                                        "word",
                                        "a",
                                        "Z",
                                        ":",
                                        "!",
                                        "?",
                                        "/",
                                        "=",
                                        std::string(1, '\0'),
                                        "\xFF",
                                        "<t a=\"",
                                        "<t a='",
                                        "longer text without any markup in it"};
  std::string xml;
  for (unsigned count = random() % 24; count > 0; --count) xml += kPieces[random() % std::size(kPieces)];
  return xml;
}

TEST(XmlText, AgreesWithTheReference) {
  std::mt19937 random(2026);
  for (int i = 0; i < 15'000; ++i) {
    const std::string xml = RandomXml(random);
    ASSERT_EQ(Bytes(xml), ReferenceRunTextBytes(xml)) << testing::PrintToString(xml);
    ASSERT_EQ(Strip(xml), ReferenceStripAllTags(xml)) << testing::PrintToString(xml);
    const std::u16string wide = FromUtf8(xml);
    ASSERT_EQ(Wide(wide), ReferenceRunTextWide(wide)) << testing::PrintToString(xml);
  }
}

TEST(XmlText, HidesNothingInLongTexts) {
  std::string xml = "<w:t>";
  for (int i = 0; i < 200'000; ++i) xml += "word" + std::to_string(i) + ' ';
  const std::string text = xml.substr(5, xml.size() - 6);
  EXPECT_EQ(Bytes(xml), text);
  EXPECT_EQ(Strip(xml), text);
  EXPECT_EQ(Wide(FromUtf8(xml)), FromUtf8(text));
  EXPECT_EQ(Strip("<![CDATA[" + text), text);
}

}  // namespace
}  // namespace quilmark
