#include "search/sort/sort_key.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "support/volumes.h"

namespace quilmark {
namespace {

std::vector<uint8_t> KeyOf(std::u16string_view text) {
  SortKeys keys;
  const auto key = keys.Add(text);
  return {key.begin(), key.end()};
}

TEST(SortKeys, StandInTheOrderOfTheirTexts) {
  std::vector<std::u16string> texts = {u"", u"a", u"a\u4e2d", u"ab", std::u16string(300, u'a')};
  for (const uint32_t unit :
       {0u, 1u, 0x7Du, 0x7Eu, 0x7Fu, 0x80u, 0xFFu, 0x407Eu, 0x407Fu, 0x4080u, 0xD800u, 0xFFFFu}) {
    const auto one = static_cast<char16_t>(unit);
    for (const size_t place : {0u, 1u, 3u, 7u, 8u, 9u}) {
      texts.push_back(std::u16string(place, u'a') + one);
      texts.push_back(std::u16string(place, u'a') + one + u"a");
      texts.push_back(std::u16string(place, u'a') + one + std::u16string(9, u'b'));
    }
  }
  std::vector<std::vector<uint8_t>> keys;
  for (const std::u16string& text : texts) keys.push_back(KeyOf(text));
  for (size_t a = 0; a < texts.size(); ++a) {
    for (size_t b = 0; b < texts.size(); ++b) {
      ASSERT_EQ(keys[a] < keys[b], texts[a] < texts[b])
          << testing::PrintToString(texts[a]) << testing::PrintToString(texts[b]);
    }
  }
}

TEST(SortKeys, StayInPlace) {
  SortKeys keys;
  const auto first = keys.Add(u"first");
  for (int i = 0; i < 100'000; ++i) keys.Add(u"one of many more");
  keys.Add(std::u16string(2'000'000, u'\u4e2d'));
  EXPECT_EQ(std::vector<uint8_t>(first.begin(), first.end()), KeyOf(u"first"));
}

bool IsRowBefore(const void*, uint32_t a, uint32_t b) { return a < b; }

TEST(SortEntries, AgreesWithAPlainSort) {
  std::mt19937 random(21);
  for (const size_t count : {0u, 1u, 2u, 24u, 25u, 3'000u, 20'000u, 60'000u}) {
    SortKeys keys;
    std::vector<std::u16string> texts(count);
    std::vector<KeyEntry> entries;
    for (std::u16string& text : texts) {
      // Long common beginnings, up to where whole keys are compared.
      text = std::u16string(random() % 3 * 7 + (random() % 50 == 0 ? 270 : 0), u'x') +
             RandomName(random, 3);
      entries.push_back(MakeKeyEntry(keys.Add(text), static_cast<uint32_t>(entries.size())));
    }
    std::shuffle(entries.begin(), entries.end(), random);
    for (const bool ascending : {true, false}) {
      std::vector<uint32_t> expected(count);
      for (uint32_t i = 0; i < count; ++i) expected[i] = i;
      std::stable_sort(expected.begin(), expected.end(), [&](uint32_t a, uint32_t b) {
        return ascending ? texts[a] < texts[b] : texts[b] < texts[a];
      });
      const KeyOrder order = {.ascending = ascending, .before = IsRowBefore};
      std::vector<KeyEntry> alone = entries, together = entries;
      SortEntries(alone, order);
      SortEntriesOnCores(together, order);
      for (size_t i = 0; i < count; ++i) {
        ASSERT_EQ(alone[i].row, expected[i]) << count << " " << i;
        ASSERT_EQ(together[i].row, expected[i]) << count << " " << i;
      }
    }
  }
}

}  // namespace
}  // namespace quilmark
