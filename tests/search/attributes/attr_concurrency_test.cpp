// All that fills and reads attributes, at once and beside a journal that renames, deletes and creates:
// the end is that of a plain reference. Run under ThreadSanitizer as well.
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <map>
#include <mutex>
#include <random>
#include <shared_mutex>
#include <thread>

#include "config/scratch_config.h"
#include "index/build/ntfs_volume.h"
#include "index/follow/usn_monitor.h"
#include "platform/background.h"
#include "platform/text.h"
#include "platform/usn_record.h"
#include "search/attributes/attr_cache.h"
#include "search/attributes/attr_cache_file.h"
#include "search/attributes/attr_jobs.h"
#include "search/attributes/folder_sizes.h"
#include "search/filter/filters.h"
#include "search/sort/sort.h"
#include "support/gives.h"
#include "support/mapped_drive.h"
#include "support/ntfs_builder.h"
#include "support/scratch_folder.h"
#include "support/scripted_device.h"
#include "support/search_harness.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

constexpr uint64_t kFolders = 8, kFirstFolderFrn = 0x0001'0000'0000'0100,
                   kFirstFileFrn = 0x0002'0000'0000'1000;
constexpr int kFilesAtFirst = 400, kRounds = 40;

// Files of a real folder, the journal that tells of their changes, and what is true of each.
class LiveFiles {
 public:
  LiveFiles(const ScratchFolder& folder, VolumeIndex& volume) : folder_(folder), volume_(volume) {
    for (uint64_t i = 0; i < kFolders; ++i) {
      folder_.MakeFolder("d" + std::to_string(i));
      AddFolder(volume_, FromAscii("d" + std::to_string(i)), kRootFrnOfTests, kFirstFolderFrn + i);
    }
    for (int i = 0; i < kFilesAtFirst; ++i) Create();
  }

  void ChangeOne() {
    if (files_.empty() || random_() % 3 == 0) return Create();
    const auto file = std::next(files_.begin(), static_cast<std::ptrdiff_t>(random_() % files_.size()));
    random_() % 3 == 0 ? Delete(file) : Rename(file);
  }

  // Sizes by reference.
  std::map<uint64_t, uint64_t> Sizes() const {
    std::map<uint64_t, uint64_t> sizes;
    for (const auto& [frn, file] : files_) sizes[frn] = file.size;
    return sizes;
  }

 private:
  struct File {
    uint64_t folder = 0;
    std::string name;
    uint64_t size = 0;
  };
  using Files = std::map<uint64_t, File>;

  static std::u16string FromAscii(const std::string& text) { return {text.begin(), text.end()}; }
  std::filesystem::path PlaceOf(const File& file) const {
    return folder_.HostPath() / ("d" + std::to_string(file.folder)) / file.name;
  }
  std::string NewName() {
    constexpr const char* kExtensions[] = {".txt", ".JPG", ".jpg", ".bin", ""};
    return "f" + std::to_string(made_++) + kExtensions[random_() % std::size(kExtensions)];
  }
  void Tell(uint64_t frn, const File& file, uint32_t reason) {
    UsnBlockBuilder block(static_cast<int64_t>(made_));
    block.Record(frn, kFirstFolderFrn + file.folder, FromAscii(file.name), reason);
    ApplyJournalBlock(volume_, block);
  }
  void Create() {
    const File file = {random_() % kFolders, NewName(), random_() % 3'000};
    folder_.MakeFile("d" + std::to_string(file.folder) + "/" + file.name, std::string(file.size, 'x'));
    const uint64_t frn = kFirstFileFrn + made_;
    files_[frn] = file;
    Tell(frn, file, kUsnReasonFileCreate);
  }
  void Delete(Files::iterator place) {
    std::filesystem::remove(PlaceOf(place->second));
    Tell(place->first, place->second, kUsnReasonFileDelete);
    files_.erase(place);
  }
  void Rename(Files::iterator place) {
    const auto before = PlaceOf(place->second);
    Tell(place->first, place->second, kUsnReasonRenameOldName);
    place->second.name = NewName();
    place->second.folder = random_() % kFolders;
    std::filesystem::rename(before, PlaceOf(place->second));
    Tell(place->first, place->second, kUsnReasonRenameNewName);
  }

  const ScratchFolder& folder_;
  VolumeIndex& volume_;
  std::mt19937 random_{31};
  uint64_t made_ = 0;
  Files files_;
};

class AttrConcurrency : public testing::Test {
 protected:
  // The C library takes in the time zone once, behind a lock that ThreadSanitizer does not see.
  AttrConcurrency() { NowLocal(); }
  ~AttrConcurrency() override {
    FollowNewResults(KeepFiltered::kNo, 0);
    TheSearch().ActiveCategory = 0;
  }
  std::shared_ptr<const ResultSet> HoldAllRows() {
    auto rows = std::make_shared<ResultSet>();
    {
      const std::shared_lock lock(volume.indexLock);
      for (uint32_t i = 0; i < volume.records.size(); ++i) rows->push_back({&volume, i});
    }
    HoldRows(rows);
    return rows;
  }
  // What a user and the timers of the window ask for, one on top of the other.
  void AskForEverything(int round) {
    const FilterSettings kSettings[] = {{.category = 2},
                                        {.sizePreset = kBelow1MB},
                                        {.category = 3, .timePreset = k7Days},
                                        {.category = 1}};
    const auto rows = HoldAllRows();
    const uint64_t first = static_cast<uint64_t>(round) * 37 % rows->size();
    HydrateRowsAsync(rows, {first, first + 50});
    DoSortAsync(1 + round % 5, round % 2 == 0 ? Direction::kByClick : Direction::kKeep);
    const FilterSettings settings = kSettings[round % 4];
    TheSearch().ActiveCategory = settings.category;
    RefreshFilteredResultsAsync(settings);
    EXPECT_LE(UpdateFilterCounts(settings).byCategory[0], rows->size());
    AutosaveAttrCacheAsync(Engine());
    if (round % 8 == 0) PrewarmAttrCacheAsync(Engine());
  }
  void SortBy(int column, bool ascending) {
    HoldAllRows();
    RunSort({.ticket = LatestSearch(), .order = {column, ascending}, .rows = HeldResults()});
  }
  const FileRecord& RecordOf(const MatchItem& row) const { return volume.records[row.index]; }

  ScratchConfig config;
  ScratchFolder folder;
  MappedDrive drive{u'Q', folder.Path()};
  SearchHarness search;
  VolumeIndex& volume = *AddVolume(Engine(), MakeTestVolume(u"Q:"));
  LiveFiles files{folder, volume};

  void ExpectSizesOfTheDisk() {
    const auto sizes = files.Sizes();
    size_t seen = 0;
    for (uint32_t i = 0; i < volume.records.size(); ++i) {
      const FileRecord& record = volume.records[i];
      if (record.deleted || record.isDirectory) continue;
      AttrEntry entry;
      EnsureFileAttributes(&volume, i, entry, Insist::kOnDisk);
      ASSERT_EQ(static_cast<uint64_t>(entry.size), sizes.at(record.frn));
      ASSERT_NE(entry.modified, 0u);
      ++seen;
    }
    EXPECT_EQ(seen, sizes.size());
  }
  void ExpectTotals() {
    RebuildFolderSizes(volume);
    std::map<uint64_t, uint64_t> totals;
    for (uint32_t i = 0; i < volume.records.size(); ++i) {
      const FileRecord& record = volume.records[i];
      const auto entry = volume.attrs.find(record.frn);
      if (record.deleted || record.isDirectory || entry == volume.attrs.end()) continue;
      totals[record.parentFrn] += static_cast<uint64_t>(entry->second.size);
      totals[kRootFrnOfTests] += static_cast<uint64_t>(entry->second.size);
    }
    EXPECT_EQ(totals.size(), kFolders + 1);
    for (const auto& [frn, expected] : totals) {
      uint64_t total = 0;
      ASSERT_TRUE(Gives(GetFolderSize(volume, frn, IfDirty::kLeave), total));
      EXPECT_EQ(total, expected);
    }
  }
  void ExpectOrders() {
    SortBy(kColumnName, true);
    const auto byName = HeldResults();
    for (size_t i = 1; i < byName->size(); ++i) {
      ASSERT_TRUE(CompareNoCase(NameOf(RecordOf((*byName)[i - 1])), NameOf(RecordOf((*byName)[i]))) <=
                  0);
    }
    EXPECT_EQ(byName->size(), files.Sizes().size() + kFolders + 1);
    SortBy(kColumnSize, false);
    const auto sizes = files.Sizes();
    uint64_t last = UINT64_MAX;
    for (const MatchItem& row : *HeldResults()) {
      if (RecordOf(row).isDirectory) continue;
      ASSERT_LE(sizes.at(RecordOf(row).frn), last);
      last = sizes.at(RecordOf(row).frn);
    }
  }
  void ExpectFilterAndCounts() {
    uint64_t texts = 0;
    for (uint32_t i = 0; i < volume.records.size(); ++i) {
      const FileRecord& record = volume.records[i];
      texts += !record.deleted && NameOf(record).ends_with(u".txt") ? 1 : 0;
    }
    const auto rows = HoldAllRows();
    const FilterContext context =
        MakeFilterContext({.category = 2, .timePreset = k7Days}, NowFileTime());
    EXPECT_EQ(FilterRows(context, *rows, TheSearch().FilteredResults.Latest())->size(), texts);
    const FilterCounts counts = UpdateFilterCounts({.timePreset = k7Days});
    EXPECT_EQ(counts.byCategory[0], files.Sizes().size());
    EXPECT_EQ(counts.byCategory[2], texts);
    EXPECT_FALSE(counts.isIncomplete);
    EXPECT_GT(texts, 0u);
  }
  void ExpectSavedCacheHoldsAll() {
    SaveAttrCache(Engine());
    const auto sizes = files.Sizes();
    volume.attrs.clear();
    LoadAttrCache(Engine());
    for (const auto& [frn, size] : sizes) {
      AttrEntry entry;
      ASSERT_TRUE(Gives(PeekAttr(volume, frn), entry));
      ASSERT_EQ(static_cast<uint64_t>(entry.size), size);
    }
  }
};

TEST_F(AttrConcurrency, EverythingAtOnceEndsAsAPlainReferenceSays) {
  std::atomic<bool> done = false;
  std::thread journal([&] {
    while (!done) files.ChangeOne();
  });
  std::thread totals([&] {
    uint64_t size = 0;
    while (!done) Gives(GetFolderSize(volume, kRootFrnOfTests, IfDirty::kRebuild), size);
  });
  std::thread saver([&] {
    for (int round = 0; !done; ++round) {
      round % 16 == 15 ? LoadAttrCache(Engine()) : SaveAttrCache(Engine());
    }
  });
  std::thread scan([&] {
    while (!done) {
      InstallMftSizes(volume, {{kFirstFileFrn, {.logical = 1, .allocated = 512}}});
      InstallMftSizes(volume, {});
    }
  });
  for (int round = 0; round < kRounds; ++round) {
    AskForEverything(round);
    // Most rounds make the one before stale, some may come to their end.
    if (round % 3 == 0) {
      EXPECT_TRUE(WaitForBackgroundJobs(60'000));
    }
  }
  done = true;
  for (std::thread* const thread : {&journal, &totals, &saver, &scan}) thread->join();
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));

  EXPECT_EQ(FindBrokenInvariant(volume), "");
  ExpectSizesOfTheDisk();
  ExpectTotals();
  ExpectOrders();
  ExpectFilterAndCounts();
  ExpectSavedCacheHoldsAll();
}

TEST(AttrImageConcurrency, FilesAreReadByManyWhileTheDeviceIsClosed) {
  constexpr uint32_t kFirst = 30, kFiles = 300;
  NtfsVolumeBuilder builder;
  for (uint32_t i = 0; i < kFiles; ++i) {
    const RecordBuilder file = RecordBuilder()
                                   .StandardInformation()
                                   .Dates(1, 1 + i)
                                   .FileName(kRootFrnOfTests, u"f")
                                   .Resident(kData, {}, Bytes(i));
    builder.Record(kFirst + i, file.Finish({}));
  }
  const ScratchFolder folder;
  folder.MakeFile("disk.img", builder.Image());
  const MappedDrive drive(u'Q', folder.PathOf(u"disk.img"));
  VolumeIndex volume;
  ASSERT_TRUE(BuildNtfsVolume(volume, u"Q:"));
  const uint32_t count = volume.records.size();
  const uint32_t firstIndex = count - kFiles;

  std::atomic<uint64_t> read = 0;
  const auto readAll = [&] {
    for (uint32_t index = firstIndex; index < count; ++index) {
      AttrEntry entry;
      EnsureFileAttributes(&volume, index, entry, Insist::kOnDisk);
      EXPECT_TRUE(entry.valid);
      // Once the device is closed nothing is known, and until then all of it.
      const uint64_t i = index - firstIndex;
      EXPECT_EQ(entry.modified, entry.created == 0 ? 0 : 1 + i);
      EXPECT_EQ(entry.size, entry.created == 0 ? 0 : static_cast<int64_t>(i));
      ++read;
    }
  };
  std::vector<std::thread> readers;
  for (int i = 0; i < 4; ++i) readers.emplace_back(readAll);
  while (read < kFiles) std::this_thread::yield();
  CloseVolume(volume);
  for (std::thread& reader : readers) reader.join();
  EXPECT_EQ(read, 4 * kFiles);
}

}  // namespace
}  // namespace quilmark
