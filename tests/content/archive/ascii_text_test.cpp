#include "content/archive/ascii_text.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>

#include "content/archive/entry_match.h"
#include "content/archive/xml_reference.h"
#include "platform/generation.h"
#include "platform/utf.h"

namespace quilmark {
namespace {

const WorkCheck kGoesOn(Ticket::Unlimited());

struct Taken {
  std::string inRuns, all;
  bool operator==(const Taken&) const = default;
};

std::optional<Taken> Take(std::string_view xml) {
  const auto runs = std::make_unique<char[]>(xml.size()), all = std::make_unique<char[]>(xml.size());
  const auto texts = TakeAsciiTexts(xml, runs.get(), all.get());
  if (!texts) return std::nullopt;
  return Taken{std::string(texts->inRuns), std::string(texts->all)};
}

TEST(AsciiText, IsThatOfTheRunsAndOfTheWhole) {
  EXPECT_EQ(Take("<w:t>Hel</w:t><w:t xml:space=\"preserve\">lo you</w:t>"),
            (Taken{"Helloyou", "Helloyou"}));
  EXPECT_EQ(Take("<p>a<t>b</t>c\n<t>d</t></p>"), (Taken{"bd", "abcd"}));
  EXPECT_EQ(Take("<t>b</t>\r\n<v>d</v>\t"), (Taken{"bd", "bd"}));
  EXPECT_EQ(Take("<t>&lt;&#65;&#x42;\xE4\xB8\xADz&#32;&#xE9;</t>"), (Taken{"<ABz", "<ABz"}));
  EXPECT_EQ(Take("<t/>a<V >b</v >c< t />d"), (Taken{"b", "abcd"}));
  EXPECT_EQ(Take("<?x?><!-- a --><t>b > c</t>"), (Taken{"b>c", "b>c"}));
  EXPECT_EQ(Take(""), (Taken{"", ""}));
  EXPECT_EQ(Take("<t>" + std::string(40, 'x') + " y\x01\x1F\x7F</t>"),
            (Taken{std::string(40, 'x') + "y\x01\x1F\x7F", std::string(40, 'x') + "y\x01\x1F\x7F"}));
}

TEST(AsciiText, IsRefusedWhereReadersDiffer) {
  for (const char* xml :
       {"<t a='>'>b</t>", "<t a=\">\">b", "<t", "<t>a<b<c>", "<![CDATA[a]]>", "<t>&bogus;</t>",
        "<t>a & b; c</t>", "a & b", "&#0;", "&#x1F600;", "<t\v>", "<\xC2\xA0t>", "<t\xC2\xA0>",
        "<t a=b \f>c", "<t>&#00000000000000065;", "<t>a&"}) {
    EXPECT_EQ(Take(xml), std::nullopt) << xml;
  }
  EXPECT_EQ(Take(std::string("<t>a\0b</t>", 10)), std::nullopt);
}

// Pieces that most parts are made of, and some that few are.
std::string RandomPart(std::mt19937& random) {
  static const std::string kPieces[] = {"<t>",
                                        "</t>",
                                        "<w:t xml:space=\"preserve\">",
                                        "</w:t>",
                                        "<v>",
                                        "</v>",
                                        "<t/>",
                                        "<p>",
                                        "</p>",
                                        "<br/>",
                                        "<w:rPr><w:b/></w:rPr>",
                                        "<!-- c -->",
                                        "&amp;",
                                        "&lt;",
                                        "&#97;",
                                        "&#x62;",
                                        " ",
                                        "\t",
                                        "\n",
                                        "a",
                                        "b",
                                        "ab",
                                        "ba",
                                        "a b",
                                        "aabb",
                                        ">",
                                        "\xC2\xA0",
                                        "\xE4\xB8\xA0",
                                        "\xE4\xB8\xAD",
                                        "\xE2\x80\x8B",
                                        "\xE3\x80\x80",
                                        "\xEF\xBB\xBF",
                                        "\v",
                                        "&#32;",
                                        "&#x4E2D;",
                                        "ababababababababababab",
                                        "/"};
  static const std::string kRarePieces[] = {"<",         "<t a='>'>", "<![CDATA[", "]]>",
                                            "&",         ";",         "&bogus;",   "&#0;",
                                            "&#x1F600;", "\xFF",      "\"",        "'",
                                            "<t a=\"",   "<\vt>",     "\xC2\x85",  std::string(1, '\0')};
  std::string xml;
  for (unsigned count = random() % 20; count > 0; --count) {
    xml += random() % 16 == 0 ? kRarePieces[random() % std::size(kRarePieces)]
                              : kPieces[random() % std::size(kPieces)];
  }
  return xml;
}

TEST(AsciiText, ChangesNoAnswer) {
  std::mt19937 random(77);
  ArchiveScratch scratch;
  int hits = 0, taken = 0;
  for (int i = 0; i < 8'000; ++i) {
    const std::string xml = RandomPart(random);
    WideGroups groups;
    for (unsigned count = 1 + random() % 2; count > 0; --count) {
      auto& group = groups.emplace_back();
      for (unsigned terms = 1 + random() % 2; terms > 0; --terms) {
        std::u16string term(1 + random() % 5, u'a');
        for (char16_t& unit : term) unit = u"aabb &<>\v\n\u4E2D"[random() % (i % 8 == 0 ? 11 : 8)];
        group.push_back(term);
      }
    }
    const ArchiveTerms terms = MakeArchiveTerms(MakeContentGroups(groups), groups);
    const bool isHit = MatchAllTexts(xml, terms, kGoesOn, scratch);
    ASSERT_EQ(MatchEntry(xml, terms, kGoesOn, scratch), isHit)
        << testing::PrintToString(xml) << ToUtf8(groups[0][0]);
    hits += isHit ? 1 : 0;
    taken += Take(xml) ? 1 : 0;
  }
  EXPECT_GT(hits, 800);
  EXPECT_GT(taken, 2000);
}

std::string Ascii(std::string_view text) {
  std::string ascii;
  for (const char byte : text) {
    const bool isSpace = byte == ' ' || (byte >= '\t' && byte <= '\r');
    if (static_cast<signed char>(byte) > 0 && !isSpace) ascii.push_back(byte);
  }
  return ascii;
}

TEST(AsciiText, IsTheAsciiOfTheReferences) {
  std::mt19937 random(78);
  int taken = 0;
  for (int i = 0; i < 8'000; ++i) {
    const std::string xml = RandomPart(random);
    const auto texts = Take(xml);
    if (!texts || FromUtf8(xml).find(u'\uFFFD') != std::u16string::npos) continue;
    ++taken;
    ASSERT_EQ(texts->inRuns, Ascii(ReferenceRunTextBytes(xml))) << testing::PrintToString(xml);
    ASSERT_EQ(texts->inRuns, Ascii(ToUtf8(ReferenceRunTextWide(FromUtf8(xml)))))
        << testing::PrintToString(xml);
    ASSERT_EQ(texts->all, Ascii(ReferenceStripAllTags(xml))) << testing::PrintToString(xml);
  }
  EXPECT_GT(taken, 2000);
}

}  // namespace
}  // namespace quilmark
