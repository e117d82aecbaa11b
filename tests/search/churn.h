// Two volumes under random changes, one of them a stick, with searches, sorts, filters and reads of
// attributes beside: the index is asked for what it has to say after each thousand.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <shared_mutex>
#include <string>
#include <thread>
#include <unordered_set>
#include <vector>

#include "index/build/ntfs_volume.h"
#include "index/follow/data_changes.h"
#include "index/follow/doubtful_records.h"
#include "index/follow/usn_monitor.h"
#include "platform/background.h"
#include "search/attributes/attr_cache.h"
#include "search/attributes/attr_jobs.h"
#include "search/attributes/folder_sizes.h"
#include "search/filter/filters.h"
#include "search/results/search_pipeline.h"
#include "search/sort/sort.h"
#include "support/churn_volume.h"
#include "support/dropped_messages.h"
#include "support/gives.h"
#include "support/search_harness.h"

namespace quilmark {

// Turns until every file in doubt was asked for, and changes of data were looked for twice.
inline constexpr int kTurnsToSettle = 2 * static_cast<int>(kTurnsALook) + 1;

class ChurnedDrive {
 public:
  enum class Scan { kNone, kHeld };  // sizes of the file table

  ChurnedDrive(ScriptedVolumes& scripts, std::u16string_view drive, uint32_t seed, Scan sizes)
      : drive_(drive), scan_(sizes), churn(scripts.Script(drive), seed) {}

  void Build() {
    churn.TakeTouched();
    ASSERT_TRUE(BuildNtfsVolume(volume, drive_));
    if (scan_ == Scan::kNone) return;
    FrnMap<MftSize> sizes;
    for (const uint64_t frn : churn.AliveFrns()) {
      const auto* const file = churn.Find(frn);
      if (!file->isDirectory) sizes[frn] = {file->facts.size, file->facts.size};
    }
    InstallMftSizes(volume, std::move(sizes));
  }

  void Close() {
    churn.SetReleased(true);
    CloseVolume(volume);
    churn.SetReleased(false);
  }

  // The monitor is out by itself.
  void WaitForTheEnd() {
    while (volume.follower.monitorRunning) std::this_thread::yield();
  }

  // What changed is as the model has it.
  void CheckTouched() {
    churn.PassTurns(kTurnsToSettle);
    const auto touched = churn.TakeTouched();
    for (const uint64_t frn : touched) {
      CheckName(frn);
      CheckFacts(frn);
      if (testing::Test::HasFailure()) return;
    }
    for (size_t i = 0; i < touched.size(); i += 50) Hydrate(touched[i]);
  }

  void CheckWhole() {
    std::unordered_set<uint64_t> alive;
    for (const uint64_t frn : churn.AliveFrns()) alive.insert(frn);
    {
      const std::shared_lock lock(volume.indexLock);
      size_t found = 0;
      for (uint32_t i = 0; i < volume.records.size(); ++i) {
        if (volume.records[i].deleted) continue;
        ++found;
        ASSERT_TRUE(alive.contains(volume.records[i].frn)) << "a ghost";
      }
      ASSERT_EQ(found, alive.size());
    }
    for (const uint64_t frn : alive) {
      CheckName(frn);
      CheckFacts(frn);
      if (testing::Test::HasFailure()) return;
    }
  }

 private:
  const std::u16string drive_;
  const Scan scan_;

  std::optional<uint32_t> LiveRecordOf(uint64_t frn) {
    const auto index = IndexOf(volume.frnToIndex, volume.records, frn);
    if (!index || *index < 0 || volume.records[static_cast<uint32_t>(*index)].deleted)
      return std::nullopt;
    return static_cast<uint32_t>(*index);
  }

  void CheckName(uint64_t frn) {
    const auto* const file = churn.Find(frn);
    const std::shared_lock lock(volume.indexLock);
    const auto index = LiveRecordOf(frn);
    ASSERT_EQ(index.has_value(), file != nullptr);
    if (file == nullptr) return;
    const FileRecord& record = volume.records[*index];
    ASSERT_EQ(NameOf(record), file->name);
    ASSERT_EQ(record.parentFrn, file->parentFrn);
  }

  // What is known is true; nothing is known of what is gone.
  void CheckFacts(uint64_t frn) {
    const auto* const file = churn.Find(frn);
    AttrEntry entry;
    MftSize size;
    if (Gives(PeekAttr(volume, frn), entry)) {
      ASSERT_NE(file, nullptr);
      ASSERT_EQ(entry.size, static_cast<int64_t>(file->facts.size));
      if (entry.modified != 0 || entry.created != 0) {
        ASSERT_EQ(entry.modified, file->facts.modified);
        ASSERT_EQ(entry.created, file->facts.created);
      }
    }
    if (scan_ == Scan::kNone) return;
    const bool isKnown = Gives(LookupMftSize(volume, frn), size);
    ASSERT_EQ(isKnown && size.logical != 0, file != nullptr && file->facts.size != 0);
    if (isKnown) {
      ASSERT_EQ(size.logical, file->facts.size);
    }
  }

  void Hydrate(uint64_t frn) {
    std::optional<uint32_t> index;
    {
      const std::shared_lock lock(volume.indexLock);
      index = LiveRecordOf(frn);
    }
    AttrEntry entry;
    if (index) EnsureFileAttributes(&volume, *index, entry, Insist::kOnDisk);
  }

 public:
  ChurnVolume churn;
  VolumeIndex& volume = *AddVolume(Engine(), std::make_unique<VolumeIndex>());
};

struct ChurnPlan {
  size_t changes = 0;
  size_t wholeEvery = 0, pullEvery = 0, wrapEvery = 0;  // changes
};

class ChurnUnderSearches {
 public:
  ChurnUnderSearches() {
    monitorPauses = {.afterReadMs = 0, .afterErrorMs = 0};
    journalPauses = {.beforeRetryMs = 0};
  }
  ~ChurnUnderSearches() {
    EXPECT_TRUE(WaitForBackgroundJobs(60'000));
    fixed_.Close();
    stick_.Close();
    monitorPauses = {};
    journalPauses = {};
  }

  void Run(const ChurnPlan& plan) {
    constexpr size_t kStep = 1'000;
    fixed_.churn.Change(kStep);
    stick_.churn.Change(kStep);
    fixed_.Build();
    stick_.Build();
    for (size_t made = kStep; made <= plan.changes && !testing::Test::HasFailure(); made += kStep) {
      SCOPED_TRACE("after " + std::to_string(made));
      if (made / kStep % 4 == 0) StartJobs(made / kStep / 4);
      ChurnedDrive& drive = made / kStep % 3 == 0 ? stick_ : fixed_;
      drive.churn.Change(kStep);
      drive.CheckTouched();
      if (made % plan.pullEvery == 0) PullStick(kStep);
      if (made % plan.wrapEvery == 0) WrapJournal(kStep);
      if (made % plan.wholeEvery == 0) CheckAll();
    }
    CheckAll();
  }

 private:
  // None is waited for: they run beside the changes.
  void StartJobs(size_t turn) {
    constexpr const char16_t* kQueries[] = {u"ab", u"abc or fed", u"\"\"", u"pp and a"};
    DoSearchAsync(kQueries[turn % std::size(kQueries)], false, false);
    const auto rows = HeldResults();
    HydrateRowsAsync(rows, {0, std::min<size_t>(rows->size(), 40)});
    if (turn % 3 == 0) DoSortAsync(turn % 2 == 0 ? 0 : 1, Direction::kByClick);
    if (turn % 10 == 0) DoSortAsync(2, Direction::kByClick);
    if (turn % 5 == 0) RefreshFilteredResultsAsync({.sizePreset = kAnySize + 1});
    DropMessages(harness_.queue);
  }

  // It comes back with other files.
  void PullStick(size_t changes) {
    stick_.churn.SetPulled(true);
    while (stick_.volume.valid) std::this_thread::yield();
    stick_.churn.Change(changes);
    stick_.churn.SetPulled(false);
    stick_.Build();
  }

  // The index stands still until it is built again.
  void WrapJournal(size_t changes) {
    fixed_.churn.Change(changes);
    fixed_.churn.Wrap();
    fixed_.WaitForTheEnd();
    EXPECT_TRUE(fixed_.volume.valid);
    fixed_.Build();
  }

  void CheckAll() {
    for (ChurnedDrive* const drive : {&fixed_, &stick_}) {
      drive->CheckTouched();
      drive->CheckWhole();
      const std::shared_lock lock(drive->volume.indexLock);
      EXPECT_EQ(FindBrokenInvariant(drive->volume), "");
    }
  }

  ScriptedVolumes scripts_;
  SearchHarness harness_;
  ChurnedDrive fixed_{scripts_, u"N:", 1, ChurnedDrive::Scan::kNone};
  ChurnedDrive stick_{scripts_, u"S:", 2, ChurnedDrive::Scan::kHeld};
};

}  // namespace quilmark
