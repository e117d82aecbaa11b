#include "content/archive/zip_walk.h"

#include <gtest/gtest.h>

#include <string>

#include "content/archive/hostile_archives.h"
#include "content/archive/string_source.h"
#include "platform/generation.h"
#include "platform/shutdown.h"
#include "support/zip_builder.h"

namespace quilmark {
namespace {

const WorkCheck kGoesOn(Ticket::Unlimited());

ArchiveQuery QueryOf(const WideGroups& groups, std::vector<std::string> patterns = {"*.xml"}) {
  return {MakeArchiveTerms(MakeContentGroups(groups), groups), std::move(patterns)};
}

FileMatch Match(const std::string& archive, const ArchiveQuery& query = QueryOf({{u"needle"}})) {
  StringSource source(archive);
  ArchiveScratch scratch;
  return MatchArchive(source, query, kGoesOn, scratch);
}

ZipEntry Part(const std::string& name, const std::string& text) {
  return {.name = name, .data = "<t>" + text + "</t>"};
}

TEST(ZipWalk, FindsAWordInAnArchive) {
  EXPECT_EQ(Match(OfficeArchive()), FileMatch::kHit);
  EXPECT_EQ(Match(OfficeArchive(), QueryOf({{u"Needle"}})), FileMatch::kMiss);
  EXPECT_EQ(Match(MakeZip({Part("a.xml", "needle")}, {.isZip64 = true})), FileMatch::kHit);
  EXPECT_EQ(Match(MakeZip({Part("a.xml", "needle")}, {.before = "MZ program", .comment = "end"})),
            FileMatch::kHit);
}

TEST(ZipWalk, FindsWhatOfficeSplits) {
  EXPECT_EQ(Match(MakeZip({{.name = "a.xml", .data = "<w:t>nee</w:t><w:t>dle</w:t>"}})),
            FileMatch::kHit);
  EXPECT_EQ(
      Match(MakeZip({{.name = "a.xml", .data = "<w:t>nee</w:t></w:r><w:br/><w:r><w:t>dle</w:t>"}})),
      FileMatch::kHit);
  EXPECT_EQ(Match(MakeZip({{.name = "content.xml", .data = "<text:p>a needle</text:p>"}})),
            FileMatch::kHit);
  EXPECT_EQ(Match(MakeZip({{.name = "a.xml", .data = "<t><![CDATA[needle]]></t>"}})), FileMatch::kHit);
}

TEST(ZipWalk, TakesTheEntriesOfItsPatterns) {
  const std::string archive = MakeZip({Part("Word\\Document.XML", "needle")});
  EXPECT_EQ(Match(archive, QueryOf({{u"needle"}}, {"word/document.xml"})), FileMatch::kHit);
  EXPECT_EQ(Match(archive, QueryOf({{u"needle"}}, {"", "xl/*", "word/*"})), FileMatch::kHit);
  EXPECT_EQ(Match(archive, QueryOf({{u"needle"}}, {"", "xl/*"})), FileMatch::kMiss);
  EXPECT_EQ(Match(archive, QueryOf({{u"needle"}}, {""})), FileMatch::kMiss);
}

TEST(ZipWalk, KnowsNamesAsTheLibraryCutsThem) {
  const std::string longName(507, 'n');
  EXPECT_EQ(Match(MakeZip({Part(longName + ".xml", "needle")})), FileMatch::kHit);
  EXPECT_EQ(Match(MakeZip({Part(longName + "n.xml", "needle")})), FileMatch::kMiss);
  EXPECT_EQ(Match(MakeZip({Part(std::string("a.xml\0.exe", 10), "needle")})), FileMatch::kHit);
}

TEST(ZipWalk, ReadsNothingWithoutAQuestion) {
  for (const ArchiveQuery& query : {QueryOf({}), QueryOf({{u"needle"}}, {})}) {
    StringSource source(OfficeArchive());
    ArchiveScratch scratch;
    EXPECT_EQ(MatchArchive(source, query, kGoesOn, scratch), FileMatch::kMiss);
    EXPECT_EQ(source.reads, 0u);
  }
}

TEST(ZipWalk, IsNoArchiveWithoutADirectory) {
  for (const std::string& bytes :
       {std::string(), std::string("needle"), std::string(10'000, 'n'), OfficeArchive().substr(0, 3000),
        std::string("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1 a compound file with a needle in it")}) {
    EXPECT_EQ(Match(bytes), FileMatch::kNoArchive) << bytes.size();
  }
  EXPECT_EQ(Match(MakeZip({})), FileMatch::kMiss);
}

TEST(ZipWalk, PassesOverWhatItCannotRead) {
  const ZipEntry good = Part("b.xml", "needle");
  std::vector<ZipEntry> bad(9, Part("a.xml", "needle"));
  bad[0].crc = 1;
  bad[1].flags = 1;
  bad[2].flags = 0x40;
  bad[3].flags = 0x20;
  bad[4].method = 12;
  bad[5].externalAttributes = 0x10;
  bad[6].name = "a.xml/";
  bad[7].size = 8;
  bad[8].packed = "\xFF\xFF";
  for (size_t i = 0; i < bad.size(); ++i) {
    EXPECT_EQ(Match(MakeZip({bad[i]}), QueryOf({{u"needle"}}, {"a*"})), FileMatch::kMiss) << i;
    EXPECT_EQ(Match(MakeZip({bad[i], good})), FileMatch::kHit) << i;
  }
}

TEST(ZipWalk, LooksAtEntriesUpToFiftyMebibytes) {
  std::string text = "<" + std::string(kLargestEntry - 15, 'x') + "><t>needle</t>";
  const std::string largest = MakeZip({{.name = "a.xml", .data = text}});
  ArchiveScratch scratch;
  {
    StringSource source(largest);
    EXPECT_EQ(MatchArchive(source, QueryOf({{u"needle"}}), kGoesOn, scratch), FileMatch::kHit);
    EXPECT_EQ(MatchArchive(source, QueryOf({{u"nothing"}}), kGoesOn, scratch), FileMatch::kMiss);
  }
  EXPECT_LE(scratch.SizeBytes(), 7 * kLargestEntry + (1u << 20));
  scratch.Trim();
  EXPECT_LE(scratch.SizeBytes(), 8u << 20);
  text.push_back(' ');
  StringSource source(MakeZip({{.name = "a.xml", .data = text}}));
  EXPECT_EQ(MatchArchive(source, QueryOf({{u"needle"}}), kGoesOn, scratch), FileMatch::kMiss);
  EXPECT_LE(scratch.SizeBytes(), 8u << 20);
}

TEST(ZipWalk, SkipsAnEntryThatHasNoBytesForItsSize) {
  ZipEntry entry = Part("a.xml", "needle");
  entry.packed = "";
  entry.packedSize = 0xFFFF'FFFF;
  entry.extra = LeBytes(1, 2) + LeBytes(8, 2) + LeBytes(0, 8);
  EXPECT_EQ(Match(MakeZip({entry})), FileMatch::kMiss);
}

// 2,000 entries of one stretch of bytes, which is unpacked `times` times.
void ExpectUnpackedOnce(const std::function<void(std::vector<ZipEntry>&)>& change, FileMatch expected) {
  std::vector<ZipEntry> entries(2000, Part("a.xml", "needle" + std::string(100'000, 'x')));
  for (size_t i = 1; i < entries.size(); ++i) {
    entries[i].hasLocal = false;
    entries[i].localOffset = 0;
  }
  change(entries);
  StringSource source(MakeZip(entries));
  ArchiveScratch scratch;
  EXPECT_EQ(MatchArchive(source, QueryOf({{u"needle", u"none"}, {u"needlex"}}), kGoesOn, scratch),
            expected);
  EXPECT_LT(source.reads, 20u);
}

TEST(ZipWalk, ReadsSharedBytesOnce) {
  ExpectUnpackedOnce(
      [](auto& entries) {
        for (ZipEntry& entry : entries) entry.data = "<t>other" + std::string(100'000, 'x') + "</t>";
      },
      FileMatch::kMiss);
  ExpectUnpackedOnce(
      [](auto& entries) {
        for (size_t i = 0; i < entries.size(); ++i) entries[i].crc = static_cast<uint32_t>(i);
      },
      FileMatch::kMiss);
  ExpectUnpackedOnce(
      [](auto& entries) {
        for (ZipEntry& entry : entries) entry.packed = "\xFF\xFF\xFF";
      },
      FileMatch::kMiss);
}

TEST(ZipWalk, ReadsSharedBytesAgainWhereTheChecksumIsRightAtLast) {
  ExpectUnpackedOnce(
      [](auto& entries) {
        for (size_t i = 0; i < 1999; ++i) entries[i].crc = static_cast<uint32_t>(i);
      },
      FileMatch::kHit);
}

TEST(ZipWalk, ReadsAnArchiveAFewTimesAtMost) {
  const std::vector<ZipEntry> entries = StretchedEntries(2000);
  const size_t packed = entries[0].packed->size();
  const std::string bytes = MakeZip(entries);
  StringSource source(bytes);
  ArchiveScratch scratch;
  EXPECT_EQ(MatchArchive(source, QueryOf({{u"needle"}}), kGoesOn, scratch), FileMatch::kMiss);
  const size_t mostUnpacked = (4 * bytes.size() + 65'536) / packed + 1;
  EXPECT_LE(source.reads, 3 * mostUnpacked + 20);
  EXPECT_LT(3 * mostUnpacked + 20, entries.size()) << "each is two reads at least";
}

TEST(ZipWalk, WalksAHundredThousandEntries) {
  std::vector<ZipEntry> entries(100'000, {.name = "a.xml", .data = "<t/>", .method = kStored});
  entries.back().data = "<t>needle";
  StringSource source(MakeZip(entries, {.isZip64 = true}));
  ArchiveScratch scratch;
  EXPECT_EQ(MatchArchive(source, QueryOf({{u"needle"}}), kGoesOn, scratch), FileMatch::kHit);
  EXPECT_LT(scratch.SizeBytes(), 1u << 20);
}

TEST(ZipWalk, DropsAHitOfAStaleSearch) {
  Generation generation;
  const WorkCheck check(generation.Supersede());
  StringSource source(OfficeArchive());
  source.onRead = [&](uint64_t) {
    if (source.reads == 2) generation.Supersede();
  };
  ArchiveScratch scratch;
  EXPECT_EQ(MatchArchive(source, QueryOf({{u"needle"}}), check, scratch), FileMatch::kStale);
  EXPECT_EQ(source.reads, 2u);
}

TEST(ZipWalk, EndsWithTheProgram) {
  ShutdownRequested = true;
  Generation generation;
  const WorkCheck check(generation.Supersede());
  StringSource source(OfficeArchive());
  ArchiveScratch scratch;
  EXPECT_EQ(MatchArchive(source, QueryOf({{u"needle"}}), check, scratch), FileMatch::kStale);
  ShutdownRequested = false;
  EXPECT_EQ(source.reads, 0u);
}

const std::vector<HostileArchive>& Archives() {
  static const auto* const archives = new std::vector<HostileArchive>(HostileArchives());
  return *archives;
}

TEST(HostileArchives, AreMissesOrHitsWithinTheirMemory) {
  const auto& archives = Archives();
  EXPECT_GE(archives.size(), 200u);
  const ArchiveQuery query = QueryOf({{u"needle"}, {u"text", u"none"}});
  for (const HostileArchive& archive : archives) {
    SCOPED_TRACE(archive.name);
    StringSource source(archive.bytes);
    ArchiveScratch scratch;
    const FileMatch outcome = MatchArchive(source, query, kGoesOn, scratch);
    EXPECT_TRUE(outcome == FileMatch::kMiss || outcome == FileMatch::kHit ||
                outcome == FileMatch::kNoArchive);
    EXPECT_LE(scratch.SizeBytes(), 7 * kLargestEntry + (1u << 20));
  }
}

TEST(HostileArchives, KeepTheirGoodEntries) {
  int hits = 0;
  for (const HostileArchive& archive : Archives()) {
    if (archive.name.starts_with("changed at")) hits += Match(archive.bytes) == FileMatch::kHit ? 1 : 0;
    // A cut archive has no directory; the other half of it has entries that begin before it.
    if (archive.name.starts_with("cut at"))
      EXPECT_EQ(Match(archive.bytes), FileMatch::kNoArchive) << archive.name;
    if (archive.name.starts_with("stands behind")) {
      EXPECT_EQ(Match(archive.bytes, QueryOf({{u"text"}})), FileMatch::kHit) << archive.name;
    }
  }
  EXPECT_GT(hits, 0);
}

// A read after which the search is stale is the last one: no entry behind it is read.
TEST(HostileArchives, EndWithinOneEntryWhenTheSearchIsStale) {
  for (const HostileArchive& archive : Archives()) {
    SCOPED_TRACE(archive.name);
    for (const size_t last : {2u, 5u}) {
      Generation generation;
      const WorkCheck check(generation.Supersede());
      StringSource source(archive.bytes);
      source.onRead = [&](uint64_t) {
        if (source.reads == last) generation.Supersede();
      };
      ArchiveScratch scratch;
      const FileMatch outcome = MatchArchive(source, QueryOf({{u"needle"}}), check, scratch);
      EXPECT_LE(source.reads, last);
      if (source.reads == last) EXPECT_EQ(outcome, FileMatch::kStale);
    }
  }
}

}  // namespace
}  // namespace quilmark
