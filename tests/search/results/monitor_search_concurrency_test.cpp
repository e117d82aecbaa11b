// Changes of the journal while searches run: the index ends as a plain model says, and no
// search waits for the monitor. Run under ThreadSanitizer as well.
#include <gmock/gmock.h>

#include <memory>
#include <random>
#include <shared_mutex>
#include <unordered_map>

#include "index/build/ntfs_volume.h"
#include "index/follow/usn_monitor.h"
#include "platform/usn_record.h"
#include "search/results/search_pipeline.h"
#include "support/scripted_device.h"
#include "support/search_harness.h"

namespace quilmark {
namespace {

constexpr uint64_t kRoot = 5;

// What the journal's rules make of each change, the plainest way.
struct Model {
  struct File {
    uint64_t parentFrn = 0;
    std::u16string name;
    bool isDirectory = false;
    bool deleted = false;
  };
  std::unordered_map<uint64_t, File> files;

  void Apply(uint64_t frn, uint64_t parentFrn, const std::u16string& name, uint32_t reason) {
    const auto known = files.find(frn);
    if ((reason & kUsnReasonFileDelete) != 0 && known != files.end()) known->second.deleted = true;
    if ((reason & (kUsnReasonFileCreate | kUsnReasonRenameNewName)) == 0) return;
    File& file = files[frn];
    file.parentFrn = parentFrn;
    file.name = name;
    file.deleted = false;
  }
};

// One change in the life of one of 20,000 references.
struct Changes {
  std::mt19937 random{11};
  Model& model;

  void AddTo(UsnBlockBuilder& block) {
    const uint64_t frn = 100 + random() % 20'000;
    const uint64_t parentFrn = random() % 4 == 0 ? 100 + random() % 50 : kRoot;
    constexpr uint32_t kReasons[] = {kUsnReasonFileCreate, kUsnReasonFileDelete, kUsnReasonRenameOldName,
                                     kUsnReasonRenameNewName,
                                     kUsnReasonFileDelete | kUsnReasonFileCreate};
    const uint32_t reason = kReasons[random() % std::size(kReasons)];
    std::u16string name = u"file_";
    for (auto i = random() % 12; i != 0; --i) name += static_cast<char16_t>(u'a' + random() % 26);
    block.Record(frn, parentFrn, name, reason);
    model.Apply(frn, parentFrn, name, reason);
  }
};

void ExpectEqualsModel(const VolumeIndex& volume, const Model& model) {
  const std::shared_lock lock(volume.indexLock);
  EXPECT_EQ(FindBrokenInvariant(volume), "");
  ASSERT_EQ(volume.records.size(), model.files.size());
  uint64_t deleted = 0;
  for (uint32_t i = 0; i < volume.records.size(); ++i) {
    const FileRecord& record = volume.records[i];
    const auto file = model.files.find(record.frn);
    ASSERT_NE(file, model.files.end());
    ASSERT_EQ(NameOf(record), file->second.name);
    ASSERT_EQ(record.parentFrn, file->second.parentFrn);
    ASSERT_EQ(record.deleted != 0, file->second.deleted);
    deleted += record.deleted;
  }
  EXPECT_EQ(volume.deletedCount, deleted);
}

// The journal of a drive, written down before the monitor starts. Returns the number of blocks.
size_t QueueChanges(DeviceScript& script, Model& model) {
  constexpr int kChanges = 200'000, kChangesABlock = 600;
  script.Queue(kFsctlQueryUsnJournal, {.output = JournalData(77, 64)});
  script.Queue(kFsctlEnumUsnData, {.output = Bytes(8)});
  Changes changes{.model = model};
  size_t blocks = 0;
  for (int made = 0; made < kChanges; made += kChangesABlock) {
    UsnBlockBuilder block(static_cast<int64_t>(1'000 + blocks));
    for (int i = 0; i < kChangesABlock; ++i) changes.AddTo(block);
    script.Queue(kFsctlReadUsnJournal, {.output = block});
    ++blocks;
  }
  return blocks;
}

TEST(MonitorSearchConcurrency, ManyChangesUnderSearchesEqualTheModel) {
  monitorPauses = {.afterReadMs = 0, .afterErrorMs = 1};
  ScriptedVolumes scripts;
  DeviceScript& script = scripts.Script(u"N:");
  Model model;
  const size_t blocks = QueueChanges(script, model);
  SearchHarness harness;
  VolumeIndex& volume = *AddVolume(Engine(), std::make_unique<VolumeIndex>());
  script.HoldJournalReads(true);
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));

  script.HoldJournalReads(false);
  do {
    for (const char16_t* const query : {u"file", u"xyz", u"e and a or q", u"\"\""}) {
      DoSearchAsync(query, false, false);
      ASSERT_THAT(harness.KindsUntilFinal(), testing::Contains(ResultKind::kFinal));
    }
  } while (script.AskedCount(kFsctlReadUsnJournal) <= blocks);

  CloseVolume(volume);
  EXPECT_GT(volume.tidying.moves, 0u) << "names have moved under the searches";
  ExpectEqualsModel(volume, model);
  monitorPauses = {};
}

}  // namespace
}  // namespace quilmark
