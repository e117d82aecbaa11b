#include "search/scan/name_scan.h"

#include <gtest/gtest.h>

#include <random>

#include "index/tables/tidy_names.h"
#include "platform/utf.h"
#include "search/scan/initials.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

std::vector<uint32_t> Scan(const VolumeIndex& volume, const CompiledQuery& query,
                           const ScanKernelRow& kernel) {
  std::vector<uint32_t> found;
  NameScan scan{.volume = volume, .query = query, .kernel = kernel.scan};
  EXPECT_TRUE(ScanApart(scan, [] { return true; }));
  const uint32_t granules = GranuleCount(volume.records.size());
  for (uint32_t g = NextGranule(scan, 0); g < granules; g = NextGranule(scan, g + 1)) {
    const GranuleHits hits = ScanGranule(scan, g);
    for (uint32_t bit = 0; bit < kGranule; ++bit) {
      if ((hits[bit / 64] >> (bit % 64) & 1) != 0) found.push_back(g * kGranule + bit);
    }
  }
  return found;
}

// The rule, word for word: not deleted, and the name matches or else its initials do.
std::vector<uint32_t> Reference(const VolumeIndex& volume, const CompiledQuery& query) {
  std::vector<uint32_t> found;
  for (uint32_t i = 0; i < volume.records.size(); ++i) {
    const FileRecord& record = volume.records[i];
    if (record.deleted) continue;
    const bool byName = MatchName(FoldedNameOf(record), query.groups);
    const bool byInitials =
        !query.initials.empty() && MatchesInitials(record.name, record.nameLength, query.initials);
    if (byName || byInitials) found.push_back(i);
  }
  return found;
}

void ExpectReference(const VolumeIndex& volume, std::u16string_view text, bool initialsOn = false) {
  const CompiledQuery query = CompileQuery(PrepareNameGroups(ParseQueryGroups(text)), initialsOn);
  for (const ScanKernelRow& kernel : ScanKernels()) {
    if (kernel.runsHere()) {
      EXPECT_EQ(Scan(volume, query, kernel), Reference(volume, query))
          << kernel.name << ": " << ToUtf8(text);
    }
  }
}

TEST(NameScan, EmptyVolumeHasNoHits) {
  const VolumeIndex volume;
  ExpectReference(volume, u"a");
  ExpectReference(volume, u"\"\"");
}

TEST(NameScan, QueryWithoutTermsFindsAllThatIsAlive) {
  const auto volume = MakeTestVolume();
  for (int i = 0; i < 1'000; ++i) AddFile(*volume, u"file");
  MarkDeleted(*volume, 7);
  RenameRecord(*volume, 8, kRootFrnOfTests, u"other");
  MarkDeleted(*volume, 9);
  RenameRecord(*volume, 9, kRootFrnOfTests, u"back");
  const CompiledQuery query = CompileQuery({}, false);
  EXPECT_EQ(Scan(*volume, query, ScanKernels().back()).size(), 1'000u);
  ExpectReference(*volume, u"\"\"");
}

TEST(NameScan, DeletedRecordIsNotFound) {
  const auto volume = MakeTestVolume();
  MarkDeleted(*volume, AddFile(*volume, u"report.txt"));
  AddFile(*volume, u"report.doc");
  ExpectReference(*volume, u"report");
}

TEST(NameScan, RenamedRecordIsFoundByItsNewNameOnly) {
  const auto volume = MakeTestVolume();
  const uint32_t index = AddFile(*volume, u"old.txt");
  for (int i = 0; i < 300; ++i) AddFile(*volume, u"filler");
  RenameRecord(*volume, index, kRootFrnOfTests, u"Fresh.txt");
  ExpectReference(*volume, u"old");
  ExpectReference(*volume, u"fresh");
  const CompiledQuery query = CompileQuery({{u"fresh"}}, false);
  EXPECT_EQ(Scan(*volume, query, ScanKernels()[0]), std::vector<uint32_t>{index});
}

TEST(NameScan, NameIsTestedUpToItsFirstNul) {
  const auto volume = MakeTestVolume();
  AddFile(*volume, std::u16string_view(u"seen\0hidden", 11));
  AddFile(*volume, u"next");
  ExpectReference(*volume, u"seen");
  ExpectReference(*volume, u"hidden");
  ExpectReference(*volume, u"next");
}

TEST(NameScan, HitsOfSeveralGroupsComeInRecordOrder) {
  const auto volume = MakeTestVolume();
  for (int i = 0; i < 600; ++i)
    AddFile(*volume, i % 3 == 0 ? u"alpha one" : i % 3 == 1 ? u"beta" : u"alpha two");
  ExpectReference(*volume, u"beta or alpha and two");
  ExpectReference(*volume, u"alpha and one or alpha and two or beta");
}

TEST(NameScan, TermLongerThanANeedleIsComparedWhole) {
  const auto volume = MakeTestVolume();
  const std::u16string longName(300, u'x');
  AddFile(*volume, longName);
  AddFile(*volume, longName + u"y");
  ExpectReference(*volume, longName + u"y");
  ExpectReference(*volume, longName);
  ExpectReference(*volume, std::u16string(255, u'x'));
}

TEST(NameScan, InitialsAddToTheSubstringHits) {
  const auto volume = MakeTestVolume();
  for (int i = 0; i < 100; ++i) {
    AddFile(*volume, u"\u5317\u4eac.txt");
    AddFile(*volume, u"bj.txt");
    AddFile(*volume, u"\u4e0a\u6d77.txt");
  }
  RenameRecord(*volume, 3, kRootFrnOfTests, u"\u5317\u4eac new.txt");
  MarkDeleted(*volume, 1);
  ExpectReference(*volume, u"bj", true);
  ExpectReference(*volume, u"sh", true);
  ExpectReference(*volume, u"bj", false);
  const CompiledQuery query = CompileQuery({{u"bj"}}, true);
  EXPECT_EQ(Scan(*volume, query, ScanKernels()[0]).size(),
            200u);  // one deleted, one that was "Shanghai"
}

TEST(NameScan, ChunksMayEndAnywhere) {
  for (const size_t capacity : {40u, 100u, 1'000u, 5'000u}) {
    const auto volume = MakeTestVolume();
    volume->names.chunkCapacity = volume->names.usedInChunk = capacity;
    for (int i = 0; i < 2'000; ++i) AddFile(*volume, i % 7 == 0 ? u"a needle in it" : u"nothing");
    ExpectReference(*volume, u"needle");
    ExpectReference(*volume, u"n");
  }
}

std::u16string RandomQuery(std::mt19937& random) {
  std::u16string query;
  const int terms = 1 + static_cast<int>(random() % 4);
  for (int i = 0; i < terms; ++i) {
    if (i != 0) query += random() % 2 == 0 ? u" and " : u" or ";
    query += RandomName(random, 1 + random() % 4);
  }
  return query;
}

TEST(NameScan, AgreesWithThePlainTestOnRandomVolumesAndQueries) {
  std::mt19937 random(6);
  for (int round = 0; round < 12; ++round) {
    const auto volume = MakeTestVolume();
    volume->names.chunkCapacity = volume->names.usedInChunk = 300 + random() % 5'000;
    const size_t count = random() % 6'000;
    for (size_t i = 0; i < count; ++i) AddFile(*volume, RandomName(random, 30));
    for (size_t i = 0; i < count / 10; ++i) {
      const auto index = static_cast<uint32_t>(random() % volume->records.size());
      if (random() % 2 == 0) {
        MarkDeleted(*volume, index);
      } else {
        RenameRecord(*volume, index, kRootFrnOfTests, RandomName(random, 30));
      }
    }
    for (int i = 0; i < 30; ++i) ExpectReference(*volume, RandomQuery(random), random() % 2 == 0);
  }
}

std::u16string NameOfAnyKind(std::mt19937& random) {
  std::u16string name = RandomName(random, 1 + random() % 20);
  if (random() % 8 == 0) name += u"\u5317\u4eac.txt";  // has initials: "bj"
  if (random() % 16 == 0) name.insert(random() % (name.size() + 1), 1, u'\0');
  return name;
}

void ChangeSomething(VolumeIndex& volume, std::mt19937& random) {
  const auto index = static_cast<uint32_t>(random() % volume.records.size());
  const FileRecord& record = volume.records[index];
  switch (random() % 5) {
    case 0:
      AddFile(volume, NameOfAnyKind(random));
      break;
    case 1:
      MarkDeleted(volume, index);
      break;
    case 2:  // found again under the same name
      RenameRecord(volume, index, record.parentFrn, std::u16string(NameOf(record)));
      break;
    default:
      RenameRecord(volume, index, kRootFrnOfTests, NameOfAnyKind(random));
  }
}

TEST(NameScan, AgreesWithThePlainTestAfterEachOfManyChanges) {
  std::mt19937 random(8);
  const auto volume = MakeTestVolume();
  volume->names.chunkCapacity = volume->names.usedInChunk = 3'000;
  volume->renamed[0].pool.chunkCapacity = volume->renamed[0].pool.usedInChunk = 2'000;
  for (int i = 0; i < 3'000; ++i) AddFile(*volume, NameOfAnyKind(random));
  for (int round = 0; round < 40; ++round) {
    for (int i = 0; i < 1'000; ++i) {
      ChangeSomething(*volume, random);
      if (i % 8 == 0) TidyNames(*volume);
    }
    ASSERT_EQ(FindBrokenInvariant(*volume), "");
    for (int i = 0; i < 4; ++i) ExpectReference(*volume, RandomQuery(random), random() % 2 == 0);
    ExpectReference(*volume, u"bj", true);
    ExpectReference(*volume, u"a");
    ExpectReference(*volume, u"\"\"");
  }
  EXPECT_GT(volume->tidying.moves, 2 * volume->names.chunks.size());  // of whole rounds, more than two
}

TEST(NameScan, BlocksOfTidiedNamesHoldNothingOfTheFormerOnes) {
  const auto volume = MakeTestVolume();
  for (uint32_t i = 1; i < 2 * kTextsPerPage; ++i) AddFile(*volume, u"former");
  for (uint32_t i = 1; i < 2 * kTextsPerPage; ++i) RenameRecord(*volume, i, kRootFrnOfTests, u"later");
  for (uint32_t i = 1; i < 2'000; ++i) MarkDeleted(*volume, i);
  TidyNames(*volume);
  const CompiledQuery former = CompileQuery({{u"former"}}, false);
  const CompiledQuery later = CompileQuery({{u"later"}}, false);
  NameScan scan{.volume = *volume, .query = former};
  EXPECT_EQ(NextGranule(scan, 0), GranuleCount(volume->records.size()));
  NameScan other{.volume = *volume, .query = later};
  EXPECT_EQ(NextGranule(other, 0), 2'000 / kGranule);
}

TEST(NameScan, NamesOnBothSidesOfATidiedChunkAreFound) {
  const auto volume = MakeTestVolume();
  volume->names.chunkCapacity = volume->names.usedInChunk = 5'000;
  const auto nameOf = [](uint32_t index) { return u"file " + FromUtf8(std::to_string(index)) + u"."; };
  for (uint32_t i = 1; i < 2 * kTextsPerPage; ++i) AddFile(*volume, nameOf(i));
  for (uint32_t i = 1'000; i < 6'000; ++i) {
    RenameRecord(*volume, i, kRootFrnOfTests, u"longer " + nameOf(i));
  }
  for (TidyNames(*volume); volume->tidying.isUnderWay;) TidyNames(*volume);
  for (const NameChunk& chunk : volume->names.chunks) {
    if (chunk.firstText < 2) continue;
    ExpectReference(*volume, nameOf(chunk.firstText - 1));
    ExpectReference(*volume, nameOf(chunk.firstText));
  }
}

TEST(NameScan, BlockOfARenamedRecordIsLookedAtOnlyForAHit) {
  const auto volume = MakeTestVolume();
  for (uint32_t i = 1; i < kTextsPerPage; ++i) AddFile(*volume, u"plain");
  for (uint32_t i = 1; i < kTextsPerPage; i += 2) RenameRecord(*volume, i, kRootFrnOfTests, u"other");
  RenameRecord(*volume, 2'000, kRootFrnOfTests, u"rare");
  const CompiledQuery query = CompileQuery({{u"rare"}}, false);
  NameScan scan{.volume = *volume, .query = query};
  ASSERT_TRUE(ScanApart(scan, [] { return true; }));
  const uint32_t granules = GranuleCount(volume->records.size());
  EXPECT_EQ(NextGranule(scan, 0), 2'000 / kGranule);
  EXPECT_EQ(NextGranule(scan, 2'000 / kGranule + 1), granules);
}

TEST(NameScan, ScanOfRenamedNamesEndsWhenItIsNotWanted) {
  const auto volume = MakeTestVolume();
  for (uint32_t i = 1; i < 4 * kGranule; ++i)
    RenameRecord(*volume, AddFile(*volume, u"old"), kRootFrnOfTests, u"fresh");
  const CompiledQuery query = CompileQuery({{u"fresh"}}, false);
  NameScan scan{.volume = *volume, .query = query};
  int asked = 0;
  EXPECT_FALSE(ScanApart(scan, [&] { return ++asked < 3; }));
  EXPECT_EQ(asked, 3);
}

TEST(NameScan, SeveralPagesOfSignatures) {
  const auto volume = MakeTestVolume();
  for (uint32_t i = 1; i < 3 * kTextsPerPage; ++i)
    AddFile(*volume, i % 9'973 == 0 ? u"rare thing" : u"plain");
  ExpectReference(*volume, u"rare");
  ExpectReference(*volume, u"a");
  ExpectReference(*volume, u"rare and thing or xyz");
}

}  // namespace
}  // namespace quilmark
