// Categories and the attribute cache, with each call to the system failing in turn.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "config/config_directory.h"
#include "config/scratch_config.h"
#include "config/settings_file.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/text_file.h"
#include "search/attributes/attr_cache.h"
#include "search/attributes/attr_cache_file.h"
#include "search/filter/filter_categories.h"
#include "support/mapped_drive.h"
#include "support/search_harness.h"
#include "support/system_faults.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

constexpr std::u16string_view kNames[] = {u"filters.en-us.ini", u"filters.ini", u"filters.bak"};
constexpr std::u16string_view kMine = u"All=\nFolders=.dir\nMine=.mine\n", kBare = u"All=\nMine=.mine\n",
                              kOther = u"All=\nFolders=.dir\nOther=.other\n";

// What the three files of the chain hold; empty: there is none.
using Chain = std::array<std::u16string, 3>;

struct FilterFailures : testing::TestWithParam<FaultKind> {
  FilterFailures() {
    pauseBeforeRereading = [](uint32_t) {};
  }
  ~FilterFailures() override {
    pauseBeforeRereading = SleepMs;
    InstallCategories(DefaultCategories(false));
  }

  void Place(const Chain& chain) {
    for (size_t i = 0; i < chain.size(); ++i) {
      RemoveFile(ConfigPath(kNames[i]));
      if (chain[i].empty()) continue;
      ASSERT_TRUE(WriteTextFile(ConfigPath(kNames[i]), chain[i]));
    }
  }
  Chain Found() {
    Chain chain;
    for (size_t i = 0; i < chain.size(); ++i) {
      chain[i] = ReadTextFile(ConfigPath(kNames[i])).value_or(u"");
    }
    return chain;
  }
  // Loads each chain with each call failing, and then as the next run would.
  void FindsMineAgain(const std::vector<Chain>& chains) {
    for (const Chain& chain : chains) {
      SCOPED_TRACE("chain " + std::to_string(&chain - chains.data()));
      FailEachCall(GetParam(), [&](const auto& failing) {
        Place(chain);
        failing([] { LoadFilterCategories(u"en-us", false); });
        EXPECT_FALSE(CurrentCategories()->empty());
        LoadFilterCategories(u"en-us", false);
        EXPECT_TRUE(Holds(u"Mine"));
      });
    }
  }
  static bool Holds(std::u16string_view label) {
    const auto rows = CurrentCategories();
    return std::any_of(rows->begin(), rows->end(),
                       [&](const FilterCategory& row) { return row.label == label; });
  }

  ScratchConfig config;
};
INSTANTIATE_TEST_SUITE_P(Each, FilterFailures, testing::ValuesIn(kAllFaultKinds));

TEST_P(FilterFailures, TheUsersCategoriesAreBackInTheNextRun) {
  FindsMineAgain({{std::u16string(kMine), u"", u""},
                  {std::u16string(kBare), u"", u""},
                  {u"", std::u16string(kMine), u""},
                  {u"", std::u16string(kBare), std::u16string(kBare)},
                  {std::u16string(kMine), std::u16string(kOther), std::u16string(kOther)}});
}

// Without a write that ends in its middle: what such a write leaves of a file that is new has rows.
struct CopyFailures : FilterFailures {};
INSTANTIATE_TEST_SUITE_P(Each, CopyFailures,
                         testing::Values(FaultKind::kOnce, FaultKind::kEnd, FaultKind::kFull));

TEST_P(CopyFailures, TheUsersCategoriesAreBackFromTheCopy) {
  FindsMineAgain({{u"", u"", std::u16string(kMine)}, {u"", u"", std::u16string(kBare)}});
}

TEST_P(FilterFailures, ACopyIsOfAFileThatWasReadWell) {
  FailEachCall(GetParam(), [&](const auto& failing) {
    Place({u"", std::u16string(kBare), u""});
    failing([] { LoadFilterCategories(u"", false); });
    const std::u16string copy = Found()[2];
    const bool isOfOne =
        std::u16string(kMine).starts_with(copy) || std::u16string(kBare).starts_with(copy);
    EXPECT_TRUE(isOfOne);
  });
}

TEST_P(FilterFailures, AProgramThatOnlyReadsWritesNothing) {
  const Chain chain = {std::u16string(kBare), std::u16string(kOther), std::u16string(kOther)};
  Place(chain);
  FailEachCall(GetParam(), [&](const auto& failing) {
    FilterTable rows;
    failing([&] { rows = ReadFilterCategories(u"en-us", false); });
    EXPECT_FALSE(rows.empty());
    EXPECT_EQ(Found(), chain);
  });
}

constexpr uint64_t kFirstFrn = 0x0003'0000'0000'0064;
constexpr AttrEntry kFormer = {.size = 1, .modified = 11, .created = 12, .valid = true};
constexpr AttrEntry kLater = {.size = 2, .modified = 21, .created = 22, .valid = true};

// Two volumes whose files have the same references, as volumes of one machine do.
struct AttrCacheFailures : testing::TestWithParam<FaultKind> {
  AttrCacheFailures() {
    for (const std::u16string_view drive : {u"C:", u"D:"}) {
      auto volume = MakeTestVolume(drive);
      for (uint64_t i = 0; i < kFiles; ++i) AddFile(*volume, u"a.txt", kRootFrnOfTests, kFirstFrn + i);
      volumes.push_back(AddVolume(Engine(), std::move(volume)));
    }
    TheAttrCacheFile().isLoaded = true;
  }
  // `count` files of C: have `entry`, all of D: another size than any of C:.
  void Store(uint64_t count, const AttrEntry& entry) {
    for (VolumeIndex* const volume : volumes) volume->attrs.clear();
    for (uint64_t i = 0; i < count; ++i) StoreAttr(*volumes[0], kFirstFrn + i, entry);
    for (uint64_t i = 0; i < kFiles; ++i) {
      StoreAttr(*volumes[1], kFirstFrn + i, {.size = 9, .modified = 9, .created = 9, .valid = true});
    }
  }
  // How many entries C: has, all of them equal to `entry`; -1 if one is not.
  int Held(const AttrEntry& entry) {
    for (const auto& [frn, held] : volumes[0]->attrs) {
      if (held.size != entry.size || held.modified != entry.modified) return -1;
    }
    return static_cast<int>(volumes[0]->attrs.size());
  }
  void Load() {
    for (VolumeIndex* const volume : volumes) volume->attrs.clear();
    LoadAttrCache(Engine());
  }

  static constexpr uint64_t kFiles = 20;
  ScratchConfig config;
  SearchHarness search;
  std::vector<VolumeIndex*> volumes;
};
INSTANTIATE_TEST_SUITE_P(Each, AttrCacheFailures, testing::ValuesIn(kAllFaultKinds));

TEST_P(AttrCacheFailures, ASaveLeavesAWholeCacheOrNone) {
  struct Counts {
    int former, later;
  };
  for (const Counts& counts : {Counts{20, 20}, {20, 7}, {7, 20}}) {
    const int former = counts.former, later = counts.later;
    FailEachCall(GetParam(), [&](const auto& failing) {
      Store(static_cast<uint64_t>(former), kFormer);
      SaveAttrCache(Engine());
      Store(static_cast<uint64_t>(later), kLater);
      const bool hasFailed = failing([] { SaveAttrCacheAtEnd(Engine()); });
      const bool isSaved = TheAttrCacheFile().AttrSavedGeneration == AttrCacheGeneration;
      Load();
      const bool isFormer = Held(kFormer) == former, isLater = Held(kLater) == later;
      EXPECT_TRUE(isFormer || isLater || volumes[0]->attrs.empty());
      EXPECT_TRUE(hasFailed || isLater);
      EXPECT_TRUE(isLater || !isSaved) << "it is tried again";
    });
  }
}

TEST_P(AttrCacheFailures, ALoadBringsAllOrNothing) {
  Store(kFiles, kFormer);
  SaveAttrCache(Engine());
  FailEachCall(GetParam(), [&](const auto& failing) {
    for (VolumeIndex* const volume : volumes) volume->attrs.clear();
    TheAttrCacheFile().isLoaded = false;
    failing([] { LoadAttrCache(Engine()); });
    EXPECT_TRUE(TheAttrCacheFile().isLoaded);
    const int held = Held(kFormer);
    EXPECT_TRUE(held == 0 || held == static_cast<int>(kFiles)) << held;
    EXPECT_EQ(volumes[1]->attrs.size(), volumes[0]->attrs.size());
  });
}

TEST_P(AttrCacheFailures, AFilesFactsComeFromTheDiskOrAreUnknown) {
  const ScratchFolder folder;
  folder.MakeFile("a.txt", "four");
  const MappedDrive drive(u'Q', folder.Path());
  auto made = MakeTestVolume(u"Q:");
  made->fileSystem = u"ext4";
  const uint32_t index = AddFile(*made, u"a.txt");
  VolumeIndex& volume = *AddVolume(Engine(), std::move(made));
  FailEachCall(GetParam(), [&](const auto& failing) {
    volume.attrs.clear();
    AttrEntry entry;
    const bool hasFailed =
        failing([&] { EnsureFileAttributes(&volume, index, entry, Insist::kOnDisk); });
    // On Windows the folder may know what the file does not tell.
    EXPECT_TRUE(entry.size == 4 || (hasFailed && entry.size == 0)) << entry.size;
    EXPECT_TRUE(hasFailed || entry.modified != 0);
  });
}

}  // namespace
}  // namespace quilmark
