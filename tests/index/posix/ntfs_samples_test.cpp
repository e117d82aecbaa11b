// The whole road over volumes that Windows and others made: raw bytes, control codes, index.
#include <gmock/gmock.h>

#include <atomic>
#include <functional>
#include <map>
#include <random>
#include <set>
#include <shared_mutex>
#include <thread>

#include "index/build/ntfs_volume.h"
#include "index/follow/doubtful_records.h"
#include "index/follow/usn_monitor.h"
#include "platform/bytes.h"
#include "platform/file_reference.h"
#include "platform/files.h"
#include "platform/ntfs/change_journal.h"
#include "platform/ntfs/raw_ntfs_device.h"
#include "platform/usn_record.h"
#include "support/mapped_drive.h"
#include "support/memory_source.h"
#include "support/ntfs_samples.h"
#include "support/scratch_folder.h"
#include "support/scripted_device.h"

namespace quilmark {
namespace {

namespace fs = std::filesystem;

struct TrueFile {
  uint64_t parentFrn = 0;
  bool isDirectory = false;
  std::set<std::pair<uint64_t, std::u16string>> names;  // of each link: its folder and its name
};
using Truth = std::map<uint64_t, TrueFile>;

Truth ReadTruth(const fs::path& records, const fs::path& names) {
  Truth truth;
  for (const SampleRow& row : ReadSampleTable(records)) {
    const bool isFile = row.at("state") == "ok" && row.at("in_use") == "1" &&
                        row.at("base_record").empty() && !row.at("name").empty();
    if (!isFile) continue;
    TrueFile& file = truth[ReferenceOf(row, "record", "seq")];
    file.parentFrn = ReferenceOf(row, "parent_record", "parent_seq");
    file.isDirectory = row.at("is_dir") == "1";
    file.names.emplace(file.parentFrn, NameOfSample(row.at("name")));
  }
  for (const SampleRow& row : ReadSampleTable(names)) {
    const auto file = truth.find(ReferenceOf(row, "record", "seq"));
    if (file == truth.end() || row.at("namespace") == "2") continue;
    file->second.names.emplace(ReferenceOf(row, "parent_record", "parent_seq"),
                               NameOfSample(row.at("name")));
  }
  return truth;
}

// Every record is a file of the truth, under one of its names, and every file of the truth has a record.
void ExpectEqualsTruth(const VolumeIndex& volume, const Truth& truth) {
  const std::shared_lock lock(volume.indexLock);
  EXPECT_EQ(FindBrokenInvariant(volume), "");
  std::set<uint64_t> seen;
  uint64_t before = 0;
  for (uint32_t i = 0; i < volume.records.size(); ++i) {
    const FileRecord& record = volume.records[i];
    SCOPED_TRACE(record.frn & 0xFFFF'FFFF'FFFF);
    const auto file = truth.find(record.frn);
    ASSERT_NE(file, truth.end());
    EXPECT_TRUE(file->second.names.contains({record.parentFrn, std::u16string(NameOf(record))}));
    EXPECT_EQ(record.isDirectory != 0, file->second.isDirectory);
    EXPECT_TRUE(i == 0 || (record.frn & 0xFFFF'FFFF'FFFF) > before) << "ascending";
    before = record.frn & 0xFFFF'FFFF'FFFF;
    seen.insert(record.frn);
  }
  for (const auto& [frn, file] : truth) {
    EXPECT_TRUE(seen.contains(frn)) << "record " << (frn & 0xFFFF'FFFF'FFFF) << " is missing";
  }
}

const MemoryVolume* openedVolume = nullptr;

std::unique_ptr<VolumeDevice> OpenMemory(std::u16string_view, VolumeAccess, uint32_t& error) {
  error = 0;
  return OpenRawNtfs(openedVolume->Open());
}

// Opens every drive over one volume in memory.
struct MemoryOpener {
  explicit MemoryOpener(const MemoryVolume& volume) {
    openedVolume = &volume;
    InstallVolumeOpener(OpenMemory);
  }
  ~MemoryOpener() { InstallVolumeOpener(nullptr); }
};

std::string NameOfTest(const testing::TestParamInfo<std::string>& info) {
  std::string name = info.param;
  std::replace_if(
      name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
  return name;
}

struct SampleVolume : testing::TestWithParam<std::string> {};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(SampleVolume);
INSTANTIATE_TEST_SUITE_P(Samples, SampleVolume, testing::ValuesIn(NtfsSamplesOf("volumes")), NameOfTest);

TEST_P(SampleVolume, IndexEqualsTheTruth) {
  const fs::path sample = NtfsSamplesFolder() / "volumes" / GetParam();
  ScratchFolder folder;
  UnpackVolume(sample, folder.HostPath());
  const MappedDrive drive(u'N', folder.PathOf(u"volume.img"));
  VolumeIndex volume;

  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));

  ExpectEqualsTruth(volume, ReadTruth(sample / "records.tsv", sample / "names.tsv"));
}

struct SampleMft : testing::TestWithParam<std::string> {};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(SampleMft);
INSTANTIATE_TEST_SUITE_P(Samples, SampleMft, testing::ValuesIn(NtfsSamplesOf("mft")), NameOfTest);

TEST_P(SampleMft, IndexEqualsTheTruth) {
  const fs::path sample = NtfsSamplesFolder() / "mft" / GetParam();
  std::vector<std::byte> bootSector;
  if (fs::exists(sample / "vbr.bin")) bootSector = ReadSample(sample / "vbr.bin");
  bootSector.resize(std::min<size_t>(bootSector.size(), 512));
  const MemoryVolume bytes = VolumeOfMft(ReadSample(sample / "mft"), bootSector);
  const MemoryOpener opener(bytes);
  VolumeIndex volume;

  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));

  ExpectEqualsTruth(volume, ReadTruth(sample / "records.tsv", sample / "names.tsv"));
}

// Builds over damaged bytes: it ends, and what it leaves holds together.
void ExpectSurvives(const MemoryVolume& bytes) {
  const MemoryOpener opener(bytes);
  VolumeIndex volume;
  const auto device = OpenRawNtfs(bytes.Open());
  if (device == nullptr) return;
  (void)BuildNtfsVolume(volume, u"N:");  // whatever comes of it
  CloseVolume(volume);
  const std::shared_lock lock(volume.indexLock);
  EXPECT_EQ(FindBrokenInvariant(volume), "");
}

TEST_P(SampleMft, FlippedBitsCostAtMostTheirRecords) {
  const auto mft = ReadSample(NtfsSamplesFolder() / "mft" / GetParam() / "mft");
  const size_t recordBytes = GetParam() == "4k-large" ? 4'096 : 1'024;
  const MemoryVolume whole = VolumeOfMft(mft);
  std::mt19937 random(7);
  for (int round = 0; round < 6; ++round) {
    MemoryVolume flipped = whole;
    for (auto& [place, bytes] : flipped.stretches) {
      if (place == 0) continue;
      for (size_t i = 0; i < std::min<size_t>(bytes.size(), 256 * recordBytes) / recordBytes; ++i) {
        bytes[i * recordBytes + random() % recordBytes] ^= std::byte(1u << random() % 8);
      }
    }
    ExpectSurvives(flipped);
  }
}

TEST_P(SampleMft, ACutVolumeKeepsTheRecordsThatAreThere) {
  const auto mft = ReadSample(NtfsSamplesFolder() / "mft" / GetParam() / "mft");
  const MemoryVolume whole = VolumeOfMft(mft);
  uint64_t end = 0;
  for (const auto& [place, bytes] : whole.stretches) end = std::max(end, place + bytes.size());
  for (uint64_t cut = 1; cut < end; cut = cut * 2 + 513) {
    MemoryVolume shorter = whole;
    shorter.size = end - cut;
    ExpectSurvives(shorter);
  }
}

TEST_P(SampleMft, APlaceThatCannotBeReadCostsItsRecordsOnly) {
  const MemoryVolume whole = VolumeOfMft(ReadSample(NtfsSamplesFolder() / "mft" / GetParam() / "mft"));
  MemoryVolume bad = whole;
  const uint64_t place = std::next(whole.stretches.begin())->first + 40 * 1'024;
  bad.badPlaces = {{place, place + 4'096}};
  const auto countOf = [](const MemoryVolume& bytes) {
    const MemoryOpener opener(bytes);
    VolumeIndex volume;
    EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));
    return volume.records.size();
  };
  EXPECT_GE(countOf(bad) + 4, countOf(whole));
}

struct SampleJournal : testing::TestWithParam<std::string> {};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(SampleJournal);
INSTANTIATE_TEST_SUITE_P(Samples, SampleJournal, testing::ValuesIn(NtfsSamplesOf("usn")), NameOfTest);

// The journal of bytes that begin at `firstUsn`.
ChangeJournal JournalOf(uint64_t firstUsn, uint64_t bytes) {
  ChangeJournal journal{.id = 1,
                        .firstUsn = static_cast<int64_t>(firstUsn),
                        .nextUsn = static_cast<int64_t>(firstUsn + bytes)};
  journal.records.size = journal.records.initialized = firstUsn + bytes;
  journal.records.extents = {{.start = StreamOffset(firstUsn), .length = bytes, .place = ByteOffset(0)}};
  return journal;
}

MemoryVolume VolumeOfBytes(std::vector<std::byte> bytes) {
  MemoryVolume volume{.size = bytes.size()};
  volume.stretches[0] = std::move(bytes);
  return volume;
}

// All blocks from `startUsn` to the end.
std::vector<std::vector<std::byte>> ReadBlocks(const MemoryVolume& volume, const ChangeJournal& journal,
                                               JournalRange range, size_t blockBytes = 65'536) {
  const auto source = volume.Open();
  const std::atomic<bool> cancelled = false;
  std::vector<std::vector<std::byte>> blocks;
  for (;;) {
    std::vector<std::byte> block(blockBytes);
    const auto reply = ReadChangeJournal(*source, journal, range, block, cancelled);
    EXPECT_EQ(reply.error, 0u);
    if (reply.error != 0 || reply.bytes <= 8) return blocks;
    block.resize(reply.bytes);
    std::memcpy(&range.startUsn, block.data(), sizeof range.startUsn);
    blocks.push_back(std::move(block));
  }
}

TEST_P(SampleJournal, RecordsEqualTheTruth) {
  const fs::path sample = NtfsSamplesFolder() / "usn" / GetParam();
  auto bytes = ReadSample(sample / "J");
  const auto truth = ReadSampleTable(sample / "usn.tsv");
  uint64_t firstUsn = NumberOf(truth.front(), "usn");
  // A sample that begins at a page of a long journal says so by its first record.
  if (firstUsn < bytes.size()) firstUsn = 0;
  const ChangeJournal journal = JournalOf(firstUsn, bytes.size());
  const MemoryVolume volume = VolumeOfBytes(std::move(bytes));

  for (const size_t blockBytes : {size_t{4'096}, size_t{65'536}}) {
    auto row = truth.begin();
    std::u16string name;
    for (const auto& block : ReadBlocks(volume, journal, {.startUsn = journal.firstUsn}, blockBytes)) {
      UsnCursor cursor{.block = block};
      while (const auto record = NextUsnRecord(cursor)) {
        while (row != truth.end() && row->at("version").starts_with("4")) ++row;
        ASSERT_NE(row, truth.end());
        SCOPED_TRACE(row->at("usn"));
        EXPECT_EQ(record->usn, static_cast<int64_t>(NumberOf(*row, "usn")));
        EXPECT_EQ(record->frn.value, ReferenceOf(*row, "record", "seq"));
        EXPECT_EQ(record->parentFrn.value, ReferenceOf(*row, "parent_record", "parent_seq"));
        EXPECT_EQ(record->reason, NumberOf(*row, "reason", 16));
        EXPECT_EQ(record->attributes, NumberOf(*row, "attributes", 16));
        EXPECT_EQ(NameUnits(*record, name), NameOfSample(row->at("name")));
        ++row;
      }
      EXPECT_FALSE(cursor.malformed);
    }
    while (row != truth.end() && row->at("version").starts_with("4")) ++row;
    EXPECT_EQ(row, truth.end()) << "records are missing";
  }
}

using NameTable = std::map<uint64_t, std::pair<uint64_t, std::u16string>>;  // frn: parent, name

NameTable AliveNames(const VolumeIndex& volume, uint64_t leastRecord) {
  NameTable names;
  for (uint32_t i = 0; i < volume.records.size(); ++i) {
    const FileRecord& record = volume.records[i];
    if (record.deleted || (record.frn & 0xFFFF'FFFF'FFFF) < leastRecord) continue;
    names[record.frn] = {record.parentFrn, std::u16string(NameOf(record))};
  }
  return names;
}

// A volume that holds nothing but what its journal tells, as it stands at the end of it.
class JournalPlayer {
 public:
  JournalPlayer(const MemoryVolume& bytes, const ChangeJournal& journal)
      : source_(bytes.Open()), journal_(journal) {
    for (const auto& block : ReadBlocks(bytes, journal, {.startUsn = journal.firstUsn})) {
      UsnCursor cursor{.block = block};
      while (const auto record = NextUsnRecord(cursor)) Note(*record);
    }
  }

  std::optional<DeviceScript::Answer> Answer(uint32_t code, std::span<const std::byte> input) const {
    switch (code) {
      case kFsctlQueryUsnJournal:
        return DeviceScript::Answer{.output = JournalData(journal_.id, journal_.firstUsn)};
      case kFsctlReadUsnJournal:
        return ReadFrom(LoadLe<int64_t>(input, 0), LoadLe<uint32_t>(input, 8));
      case kFsctlGetNtfsFileRecord: {
        const auto found = inUse_.upper_bound(LoadLe<uint64_t>(input, 0));
        if (found == inUse_.begin()) return DeviceScript::Answer{.error = kErrorHandleEof};
        return DeviceScript::Answer{.output = FileRecordData(std::prev(found)->second)};
      }
      default:
        return std::nullopt;
    }
  }

  std::set<uint64_t> alive;  // files of which a name is known and no later record says that they went
  mutable std::atomic<int> readsAtTheEnd = 0;

 private:
  void Note(const UsnRecord& record) {
    const bool isDeleted = (record.reason & kUsnReasonFileDelete) != 0;
    const bool isNamed = (record.reason & (kUsnReasonFileCreate | kUsnReasonRenameNewName)) != 0;
    const uint64_t frn = record.frn.value, number = RecordNumberOf(frn);
    if (isDeleted) {
      inUse_.erase(number);
      alive.erase(frn);
    } else {
      inUse_[number] = frn;
      if (isNamed) alive.insert(frn);
    }
  }

  DeviceScript::Answer ReadFrom(int64_t usn, uint32_t reasons) const {
    const std::atomic<bool> cancelled = false;
    Bytes block(65'536);
    const auto reply = ReadChangeJournal(*source_, journal_, {.startUsn = usn, .reasonMask = reasons},
                                         block, cancelled);
    block.resize(reply.bytes);
    if (reply.bytes <= kUsnPositionBytes) ++readsAtTheEnd;
    return {.error = reply.error, .output = block};
  }

  const std::unique_ptr<ByteSource> source_;
  const ChangeJournal journal_;
  std::map<uint64_t, uint64_t> inUse_;  // record number: reference
};

TEST_P(SampleJournal, LeavesNoFileThatTheVolumeDoesNotHave) {
  auto bytes = ReadSample(NtfsSamplesFolder() / "usn" / GetParam() / "J");
  const auto truth = ReadSampleTable(NtfsSamplesFolder() / "usn" / GetParam() / "usn.tsv");
  const uint64_t firstUsn = NumberOf(truth.front(), "usn");
  const ChangeJournal journal = JournalOf(firstUsn < bytes.size() ? 0 : firstUsn, bytes.size());
  const MemoryVolume volumeBytes = VolumeOfBytes(std::move(bytes));
  const JournalPlayer player(volumeBytes, journal);
  monitorPauses = {.afterReadMs = 0, .afterErrorMs = 0};
  ScriptedVolumes scripts;
  scripts.Script(u"N:").Play(std::bind_front(&JournalPlayer::Answer, &player));
  VolumeIndex volume;
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));

  while (player.readsAtTheEnd <= kAsksInDoubt) std::this_thread::yield();
  CloseVolume(volume);
  monitorPauses = {};

  std::set<uint64_t> alive;
  for (const auto& [frn, file] : AliveNames(volume, 0)) alive.insert(frn);
  EXPECT_EQ(alive, player.alive);
  EXPECT_TRUE(volume.inDoubt.empty());
}

void Replay(VolumeIndex& volume, const MemoryVolume& bytes, const ChangeJournal& journal, int64_t from) {
  for (const auto& block : ReadBlocks(bytes, journal, {.startUsn = from, .reasonMask = 0x3300})) {
    ApplyJournalBlock(volume, block);
  }
}

// Two moments of a volume; `name` alone of the folders that stand there.
std::vector<std::string> ReplayCalled(const std::string& name) {
  auto names = NtfsSamplesOf("replay");
  std::erase_if(names, [&](const std::string& other) { return other != name; });
  return names;
}

struct SampleReplayOfImages : testing::TestWithParam<std::string> {};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(SampleReplayOfImages);
INSTANTIATE_TEST_SUITE_P(Samples, SampleReplayOfImages, testing::ValuesIn(ReplayCalled("one-minute")),
                         NameOfTest);

TEST_P(SampleReplayOfImages, JournalOfOneMinuteGivesTheNamesOfAfter) {
  const fs::path sample = NtfsSamplesFolder() / "replay" / GetParam();
  const MemoryVolume before = VolumeOfMft(ReadSample(sample / "before.mft"));
  const MemoryOpener opener(before);
  VolumeIndex volume;
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  CloseVolume(volume);
  const auto start = ReadSample(sample / "start_usn");
  const int64_t startUsn =
      std::atoll(std::string(reinterpret_cast<const char*>(start.data()), start.size()).c_str());
  auto bytes = ReadSample(sample / "J");
  const ChangeJournal journal = JournalOf(0, bytes.size());
  const MemoryVolume journalBytes = VolumeOfBytes(std::move(bytes));

  Replay(volume, journalBytes, journal, startUsn);

  NameTable truth;
  for (const auto& [frn, file] : ReadTruth(sample / "after.records.tsv", sample / "after.names.tsv")) {
    if ((frn & 0xFFFF'FFFF'FFFF) < 16) continue;
    ASSERT_EQ(file.names.size(), 1u);
    truth[frn] = *file.names.begin();
  }
  EXPECT_EQ(AliveNames(volume, 16), truth);
  EXPECT_EQ(truth.size(), 28u);
}

void LoadTable(VolumeIndex& volume, const std::vector<SampleRow>& rows) {
  const std::unique_lock lock(volume.indexLock);
  volume.drive = u"N:";
  for (const SampleRow& row : rows) {
    const uint64_t frn = ReferenceOf(row, "record", "seq");
    const uint32_t index = AppendRecord(volume,
                                        {.frn = frn,
                                         .parentFrn = ReferenceOf(row, "parent_record", "parent_seq"),
                                         .isDirectory = row.at("is_dir") == "1"},
                                        NameOfSample(row.at("name")));
    SetIndexOf(volume.frnToIndex, volume.records, frn, index);
  }
}

NameTable TableNames(const std::vector<SampleRow>& rows) {
  NameTable names;
  for (const SampleRow& row : rows) {
    names[ReferenceOf(row, "record", "seq")] = {ReferenceOf(row, "parent_record", "parent_seq"),
                                                NameOfSample(row.at("name"))};
  }
  return names;
}

struct SampleReplayOfTables : testing::TestWithParam<std::string> {};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(SampleReplayOfTables);
INSTANTIATE_TEST_SUITE_P(Samples, SampleReplayOfTables,
                         testing::ValuesIn(ReplayCalled("winxp-three-minutes")), NameOfTest);

TEST_P(SampleReplayOfTables, JournalOfThreeMinutesGivesAfterAndThenChangesNothing) {
  const fs::path sample = NtfsSamplesFolder() / "replay" / GetParam();
  const auto after = ReadSampleTable(sample / "after.tsv");
  VolumeIndex volume;
  LoadTable(volume, ReadSampleTable(sample / "before.tsv"));
  auto bytes = ReadSample(sample / "J");
  const ChangeJournal journal = JournalOf(0, bytes.size());
  const MemoryVolume journalBytes = VolumeOfBytes(std::move(bytes));

  Replay(volume, journalBytes, journal, 0);
  EXPECT_EQ(AliveNames(volume, 0), TableNames(after));
  Replay(volume, journalBytes, journal, 0);
  EXPECT_EQ(AliveNames(volume, 0), TableNames(after));

  const std::shared_lock lock(volume.indexLock);
  EXPECT_EQ(FindBrokenInvariant(volume), "");
}

}  // namespace
}  // namespace quilmark
