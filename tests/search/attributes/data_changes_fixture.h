// A volume whose journal tells of changes of data, and whose sizes and dates a test says.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "config/scratch_config.h"
#include "index/build/ntfs_volume.h"
#include "index/follow/data_changes.h"
#include "index/follow/usn_monitor.h"
#include "platform/file_reference.h"
#include "platform/usn_record.h"
#include "search/attributes/attr_cache.h"
#include "support/ntfs_builder.h"
#include "support/scripted_device.h"
#include "support/search_harness.h"

namespace quilmark {

inline constexpr uint64_t kRoot = MakeReference(5, 5), kDocs = MakeReference(40, 1),
                          kFile = MakeReference(41, 3), kOther = MakeReference(42, 3);
inline constexpr uint32_t kExtend = kUsnReasonDataExtend, kBasicInfo = kUsnReasonBasicInfoChange;

inline std::atomic<int> timesTold = 0;

// N:\Docs\a.txt (kFile) and b.txt (kOther), whose sizes and dates are those of `facts`.
class DataChangesOfAVolume : public testing::Test {
 protected:
  DataChangesOfAVolume() {
    monitorPauses = {.afterReadMs = 1, .afterErrorMs = 1};
    timesTold = 0;
    volume.listeners.attributesBecameStale = [] { ++timesTold; };
    script.PlayFacts([this](uint64_t frn) -> std::optional<FileFacts> {
      if (meanwhile) std::exchange(meanwhile, nullptr)();
      return frn == kFile ? std::optional(fileFacts) : FileFacts{.size = 7, .modified = 1, .created = 1};
    });
  }
  ~DataChangesOfAVolume() override {
    CloseVolume(volume);
    monitorPauses = {};
  }
  void Build(int64_t nextUsn = 1'000, uint64_t journalId = 77) {
    script.Queue(kFsctlQueryUsnJournal, {.output = JournalData(journalId, nextUsn)});
    script.Queue(kFsctlEnumUsnData, {.output = Bytes(8)});
    script.Queue(kFsctlEnumUsnData,
                 {.output = UsnBlockBuilder(1)
                                .Record(kDocs, kRoot, u"Docs", 0, kFileAttributeDirectory)
                                .Record(kFile, kDocs, u"a.txt")
                                .Record(kOther, kDocs, u"b.txt")});
    ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  }
  void Look() {
    ASSERT_TRUE(script.WaitForAsked(kReadOfDataChanges, script.AskedCount(kReadOfDataChanges) + 3));
  }
  void JournalSays(int64_t position, uint64_t frn, uint32_t reason) {
    script.Queue(kReadOfDataChanges,
                 {.output = UsnBlockBuilder(position).Record(frn, kDocs, u"a.txt", reason)});
    Look();
  }
  AttrEntry Ask(Insist insist = Insist::kOnDisk, uint32_t index = 1) {
    AttrEntry entry;
    EnsureFileAttributes(&volume, index, entry, insist);
    return entry;
  }
  Bytes RecordWithData(uint64_t frn, size_t size) const {
    Bytes data = FileRecordData(frn);
    data.resize(12);
    const Bytes record = RecordBuilder()
                             .StandardInformation()
                             .Resident(kData, u"", Bytes(size))
                             .Finish({.sequence = SequenceOf(frn)});
    data.insert(data.end(), record.begin(), record.end());
    return data;
  }

  ScratchConfig config;
  SearchHarness harness;
  ScriptedVolumes scripts;
  DeviceScript& script = scripts.Script(u"N:");
  FileFacts fileFacts{.size = 10, .modified = 20, .created = 30};
  std::function<void()> meanwhile;
  VolumeIndex& volume = *AddVolume(Engine(), std::make_unique<VolumeIndex>());
};

}  // namespace quilmark
