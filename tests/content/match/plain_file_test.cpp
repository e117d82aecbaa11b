#include "content/match/plain_file.h"

#include <gtest/gtest.h>

#include <random>

#include "platform/code_pages.h"
#include "platform/utf.h"
#include "support/scratch_folder.h"
#include "support/scripted_content.h"

namespace quilmark {
namespace {

using std::literals::operator""s;

constexpr size_t kMega = 1'048'576;

// A file of a test, once as a system without views has it and once as one with them.
struct PlainFile : testing::TestWithParam<bool> {
  PlainFile() {
    script.hasViews = GetParam();
    reader.content = std::make_unique<ScriptedContent>(script);
  }
  ~PlainFile() override { EXPECT_EQ(script.open, 0) << "the file was left open"; }

  FileMatch Match(const QueryGroups& query, int maxFileSizeMB = 100) {
    return MatchPlainFile(u"C:\\file.txt", MakeContentGroups(query), Ticket::Unlimited(), maxFileSizeMB,
                          reader);
  }

  ContentScript script;
  PlainFileReader reader;
};
INSTANTIATE_TEST_SUITE_P(Systems, PlainFile, testing::Bool(),
                         [](const auto& system) { return system.param ? "WithViews" : "WithReads"; });

TEST_P(PlainFile, HoldsItsTermsOrNot) {
  script.bytes = "some text";
  EXPECT_EQ(Match({{u"text"}}), FileMatch::kHit);
  EXPECT_EQ(Match({{u"Text"}}), FileMatch::kMiss);
  EXPECT_EQ(Match({{u"some", u"more"}, {u"me te"}}), FileMatch::kHit);
}

TEST_P(PlainFile, AnEmptyOneIsAMissAndNeverMapped) {
  EXPECT_EQ(Match({{u"text"}}), FileMatch::kMiss);
  EXPECT_EQ(script.views, 0);
}

TEST_P(PlainFile, ANetworkPathIsRefusedUntouched) {
  EXPECT_EQ(MatchPlainFile(u"\\\\server\\share\\file.txt", MakeContentGroups({{u"a"}}),
                           Ticket::Unlimited(), 100, reader),
            FileMatch::kNetwork);
  EXPECT_EQ(script.opened, 0);
}

TEST_P(PlainFile, OneWhoseContentStandsElsewhereIsNeverRead) {
  script.bytes = "text";
  script.opening = ContentOpening::kPlaceholder;
  EXPECT_EQ(Match({{u"text"}}), FileMatch::kPlaceholder);
  EXPECT_EQ(script.opened, 0);
  EXPECT_TRUE(script.reads.empty());
  EXPECT_EQ(script.views, 0);
}

TEST_P(PlainFile, ALinkThatIsRefusedIsAMissLikeAnyOther) {
  script.opening = ContentOpening::kLink;
  EXPECT_EQ(Match({{u"text"}}), FileMatch::kMiss);
}

TEST_P(PlainFile, WhatCannotBeOpenedOrReadIsAMissOfItsOwnKind) {
  script.bytes = "text";
  script.opening = ContentOpening::kCannotOpen;
  EXPECT_EQ(Match({{u"text"}}), FileMatch::kCannotOpen);
  script.opening = ContentOpening::kOpened;
  script.viewFails = true;
  script.readFailsAt = 0;
  EXPECT_EQ(Match({{u"text"}}), FileMatch::kCannotRead);
  script.viewFails = false;
  script.pageFails = true;
  EXPECT_EQ(Match({{u"text"}}), FileMatch::kCannotRead);
  script.sizeFails = true;
  EXPECT_EQ(Match({{u"text"}}), FileMatch::kCannotRead);
}

TEST_P(PlainFile, WithoutGroupsNothingMatches) { EXPECT_EQ(Match({}), FileMatch::kMiss); }

TEST_P(PlainFile, AboveTheLimitIsNotLookedAt) {
  script.bytes = "text" + std::string(2 * kMega - 4, '.');
  EXPECT_EQ(Match({{u"text"}}, 2), FileMatch::kHit) << "exactly at the limit";
  script.bytes += '.';
  EXPECT_EQ(Match({{u"text"}}, 2), FileMatch::kTooLarge);
  EXPECT_EQ(Match({{u"text"}}, 0), FileMatch::kHit) << "no limit";
  EXPECT_EQ(Match({{u"text"}}, -1), FileMatch::kHit) << "no limit";
}

TEST_P(PlainFile, OfFiftyMegabytesIsLookedAtAsAWholeAndALargerOneStreamed) {
  script.bytes = std::string(kStreamingThreshold, '.');
  EXPECT_EQ(Match({{u"text"}}), FileMatch::kMiss);
  EXPECT_EQ(script.views, GetParam() ? 1 : 0);
  EXPECT_EQ(std::count(script.reads.begin(), script.reads.end(), kStreamingRead), 0);
  script.bytes += '.';
  EXPECT_EQ(Match({{u"text"}}), FileMatch::kMiss);
  EXPECT_EQ(script.views, GetParam() ? 1 : 0) << "not mapped";
  EXPECT_GE(std::count(script.reads.begin(), script.reads.end(), kStreamingRead), 12);
}

TEST_P(PlainFile, ATermAcrossAnyBorderOfTwoReadsIsFound) {
  // With reads alone the first one is short, and the others follow it.
  const std::vector<std::pair<size_t, size_t>> borders = {
      {kStreamingThreshold + 1, kStreamingRead},
      {kStreamingThreshold + 1, kCachedRead},
      {kStreamingThreshold + 1, kCachedRead + kStreamingRead},
      {kStreamingThreshold + 1, 2 * kStreamingRead},
      {kMega, kCachedRead},
      {kMega, 2 * kCachedRead}};
  for (const auto& [size, border] : borders) {
    for (const size_t before : {1u, 4u, 8u}) {
      script.bytes.assign(size, '.');
      script.bytes.replace(border - before, 9, "boundary!");
      EXPECT_EQ(Match({{u"boundary!"}}), FileMatch::kHit) << size << " " << border << " " << before;
    }
    script.bytes.assign(size, '.');
    script.bytes.replace(border - 7, 16, "b\0o\0u\0n\0d\0a\0r\0y\0"s);
    EXPECT_EQ(Match({{u"boundary"}}), FileMatch::kHit) << size << " " << border << " wide";
  }
}

TEST_P(PlainFile, TermsOfAGroupMayLieInTheFirstBlockAndInTheLast) {
  script.bytes.assign(60 * kMega, '.');
  script.bytes.replace(0, 5, "first");
  script.bytes.replace(script.bytes.size() - 4, 4, "last");
  EXPECT_EQ(Match({{u"first", u"last"}}), FileMatch::kHit);
  EXPECT_EQ(Match({{u"first", u"lost"}}), FileMatch::kMiss);
}

TEST_P(PlainFile, AHitInTheFirstBlockEndsTheReading) {
  script.bytes.assign(60 * kMega, '.');
  script.bytes.replace(10, 5, "first");
  EXPECT_EQ(Match({{u"first"}}), FileMatch::kHit);
  EXPECT_EQ(script.reads.size(), 1u);
}

TEST_P(PlainFile, AReadThatFailsHalfWayEndsTheReading) {
  script.bytes.assign(60 * kMega, '.');
  script.bytes.replace(script.bytes.size() - 4, 4, "last");
  script.readFailsAt = 30 * kMega;
  EXPECT_EQ(Match({{u"last"}}), FileMatch::kCannotRead);
}

TEST_P(PlainFile, AReaderIsAsGoodAsNewForTheNextFile) {
  script.bytes.assign(60 * kMega, 'a');
  EXPECT_EQ(Match({{u"word"}}), FileMatch::kMiss);
  script.bytes = "wor";
  EXPECT_EQ(Match({{u"word"}}), FileMatch::kMiss);
  EXPECT_EQ(Match({{u"aaa"}}), FileMatch::kMiss) << "what was read before is not searched again";
}

TEST_P(PlainFile, AStaleSearchReadsNoFurtherBlock) {
  Generation generation;
  const Ticket ticket = generation.Supersede();
  script.bytes.assign(60 * kMega, '.');
  size_t readsBefore = 0;
  script.beforeRead = [&] {
    if (script.reads.size() == 5) {
      generation.Supersede();
      readsBefore = script.reads.size();
    }
  };
  EXPECT_EQ(MatchPlainFile(u"C:\\a", MakeContentGroups({{u"word"}}), ticket, 100, reader),
            FileMatch::kStale);
  ASSERT_EQ(readsBefore, 5u);
  EXPECT_EQ(script.reads.size(), readsBefore);
  EXPECT_EQ(MatchPlainFile(u"C:\\a", MakeContentGroups({{u"word"}}), ticket, 100, reader),
            FileMatch::kStale);
  EXPECT_EQ(script.opened, 1) << "a stale search opens nothing";
}

TEST_P(PlainFile, AHitOfASearchThatWentStaleMeanwhileIsDropped) {
  Generation generation;
  const Ticket ticket = generation.Supersede();
  script.bytes.assign(60 * kMega, 'a');
  script.beforeRead = [&] { generation.Supersede(); };
  EXPECT_EQ(MatchPlainFile(u"C:\\a", MakeContentGroups({{u"aaa"}}), ticket, 100, reader),
            FileMatch::kStale);
}

// --- files of the system

TEST(PlainFileOfTheSystem, IsReadAndClosed) {
  const ScratchFolder folder;
  folder.MakeFile("a.txt", "plain words");
  PlainFileReader reader;
  const auto match = [&](std::u16string_view name, const char16_t* word) {
    return MatchPlainFile(folder.PathOf(name), MakeContentGroups({{word}}), Ticket::Unlimited(), 100,
                          reader);
  };
  EXPECT_EQ(match(u"a.txt", u"plain"), FileMatch::kHit);
  EXPECT_EQ(match(u"a.txt", u"fancy"), FileMatch::kMiss);
  EXPECT_EQ(match(u"none.txt", u"plain"), FileMatch::kCannotOpen);
  folder.MakeFile("empty.txt");
  EXPECT_EQ(match(u"empty.txt", u"plain"), FileMatch::kMiss);
}

// The words of a query in the encodings that a file may have.
std::string Encoded(std::u16string_view text, int encoding) {
  std::string bytes = encoding == 0 ? ToUtf8(text) : WideBytesOf(text);
  for (size_t i = 0; encoding == 2 && i + 1 < bytes.size(); i += 2) std::swap(bytes[i], bytes[i + 1]);
  return encoding == 3 ? EncodeAnsiLossy(text) : bytes;
}

// The rules by the obvious way: each form of each term is looked for in the whole file.
bool HoldsByTheRules(const std::string& bytes, const QueryGroups& query) {
  return std::any_of(query.begin(), query.end(), [&bytes](const auto& terms) {
    return !terms.empty() && std::all_of(terms.begin(), terms.end(), [&bytes](const auto& term) {
      for (const int encoding : {0, 1, 3}) {
        if (bytes.find(Encoded(term, encoding)) != bytes.npos) return true;
      }
      return false;
    });
  });
}

TEST(PlainFileOfTheSystem, AgreesWithASlowReferenceOverAllSizesAndEncodings) {
  const ScratchFolder folder;
  const QueryGroups queries[] = {{{u"quarkvanadium"}},
                                 {{u"\u00DCbergr\u00F6\u00DFe"}},
                                 {{u"\u0416\u0443\u043A\u0437\u044F"}, {u"quark", u"vanadium"}}};
  const std::u16string words[] = {u"quarkvanadium", u"\u00DCbergr\u00F6\u00DFe",
                                  u"\u0416\u0443\u043A\u0437\u044F"};
  std::mt19937 random(11);
  PlainFileReader reader;
  int hits = 0;
  for (const size_t size : {0u, 1u, 100u, 4'096u, 262'144u, 4'194'304u + 7, 52'428'800u, 52'428'801u}) {
    for (int encoding = 0; encoding < 4; ++encoding) {
      std::string bytes(size, '.');
      const std::string word = Encoded(words[random() % 3], encoding);
      // Across the first 4 MiB where the file is that long, else anywhere.
      const size_t at = size > 4'194'304u ? 4'194'304u - word.size() / 2
                        : size < 100      ? size
                                          : random() % 50;
      if (size >= 100) bytes.replace(at, word.size(), word);
      bytes.resize(size);
      folder.MakeFile("a.txt", bytes);
      for (const QueryGroups& query : queries) {
        const bool expected = HoldsByTheRules(bytes, query);
        EXPECT_EQ(MatchPlainFile(folder.PathOf(u"a.txt"), MakeContentGroups(query), Ticket::Unlimited(),
                                 0, reader),
                  expected ? FileMatch::kHit : FileMatch::kMiss)
            << size << " " << encoding;
        hits += expected;
      }
    }
  }
  EXPECT_GT(hits, 10);
}

}  // namespace
}  // namespace quilmark
