#include "platform/ntfs/raw_ntfs_device.h"

#include <gmock/gmock.h>

#include "platform/bytes.h"
#include "platform/usn_record.h"
#include "support/ntfs_builder.h"

namespace quilmark {
namespace {

using testing::ElementsAre;

constexpr uint64_t kRoot = MakeReference(5, 1);

struct Listed {
  uint64_t frn;
  uint64_t parentFrn;
  std::u16string name;
  bool operator==(const Listed&) const = default;
};

VolumeDevice::Reply Ask(VolumeDevice& device, uint32_t code, const std::vector<uint64_t>& input,
                        std::span<std::byte> output) {
  return device.Control(code, std::as_bytes(std::span(input)), output);
}

// All files from record `first` on, asked for with blocks of `blockBytes`.
std::vector<Listed> Enumerate(VolumeDevice& device, uint64_t first = 16, int64_t lowUsn = 0,
                              int64_t highUsn = INT64_MAX, size_t blockBytes = 65'536) {
  std::vector<Listed> files;
  Bytes block(blockBytes);
  std::u16string name;
  for (;;) {
    const auto reply =
        Ask(device, kFsctlEnumUsnData,
            {first, static_cast<uint64_t>(lowUsn), static_cast<uint64_t>(highUsn)}, block);
    if (reply.error != 0) {
      EXPECT_EQ(reply.error, kErrorHandleEof);
      return files;
    }
    UsnCursor cursor{.block = std::span(block).first(reply.bytes)};
    while (const auto record = NextUsnRecord(cursor)) {
      files.push_back(
          {record->frn.value, record->parentFrn.value, std::u16string(NameUnits(*record, name))});
    }
    first = LoadLe<uint64_t>(block, 0);
  }
}

std::unique_ptr<VolumeDevice> OpenWithJournal(const MemoryVolume& volume) {
  auto device = OpenRawNtfs(volume.Open());
  if (device != nullptr) Ask(*device, kFsctlCreateUsnJournal, {0, 0}, {});
  return device;
}

TEST(RawNtfsDevice, GivesOneRecordForEachFileInUse) {
  const auto volume = NtfsVolumeBuilder()
                          .Folder(20, kRoot, u"Docs")
                          .File(21, MakeReference(20, 1), u"a.txt")
                          .Record(22, RecordBuilder().FileName(kRoot, u"gone").Finish({.inUse = false}))
                          .Record(23, RecordBuilder().FileName(kRoot, u"b").Finish({.sequence = 9}))
                          .Build();
  const auto device = OpenWithJournal(volume);
  ASSERT_NE(device, nullptr);
  EXPECT_THAT(Enumerate(*device),
              ElementsAre(Listed{MakeReference(20, 1), kRoot, u"Docs"},
                          Listed{MakeReference(21, 1), MakeReference(20, 1), u"a.txt"},
                          Listed{MakeReference(23, 9), kRoot, u"b"}));
}

TEST(RawNtfsDevice, EveryBlockSizeGivesTheSameFiles) {
  NtfsVolumeBuilder builder;
  for (uint64_t i = 0; i < 60; ++i) {
    builder.File(20 + i, kRoot, std::u16string(1 + i * 3, static_cast<char16_t>(u'a' + i % 26)));
  }
  const auto volume = builder.Build();
  const auto device = OpenWithJournal(volume);
  const auto whole = Enumerate(*device);
  ASSERT_EQ(whole.size(), 60u);
  for (const size_t blockBytes : {size_t{512}, size_t{520}, size_t{777}, size_t{4'096}}) {
    EXPECT_EQ(Enumerate(*device, 16, 0, INT64_MAX, blockBytes), whole) << blockBytes;
  }
}

TEST(RawNtfsDevice, ABlockWithoutRoomForOneRecordIsToldAsSuch) {
  const auto volume = NtfsVolumeBuilder().File(20, kRoot, std::u16string(200, u'n')).Build();
  const auto device = OpenWithJournal(volume);
  Bytes block(100);
  EXPECT_EQ(Ask(*device, kFsctlEnumUsnData, {20, 0, INT64_MAX}, block).error, kErrorMoreData);
  EXPECT_EQ(Ask(*device, kFsctlEnumUsnData, {21, 0, INT64_MAX}, block).error, kErrorHandleEof);
}

TEST(RawNtfsDevice, TheWin32NameIsPreferredToTheShortOne) {
  const auto named = [](std::vector<std::pair<const char16_t*, NameSpace>> names) {
    RecordBuilder record;
    for (const auto& [name, space] : names) record.FileName(kRoot, name, space);
    return record.Finish({});
  };
  const auto volume =
      NtfsVolumeBuilder()
          .Record(20, named({{u"LONGNA~1.TXT", NameSpace::kDos}, {u"Long name.txt", NameSpace::kWin32}}))
          .Record(21, named({{u"posix", NameSpace::kPosix}, {u"SHORT", NameSpace::kDos}}))
          .Record(22, named({{u"ONLYDOS", NameSpace::kDos}}))
          .Record(23, named({{u"BOTH", NameSpace::kWin32AndDos}}))
          .Build();
  const auto device = OpenWithJournal(volume);
  const auto files = Enumerate(*device);
  ASSERT_EQ(files.size(), 4u);
  EXPECT_EQ(files[0].name, u"Long name.txt");
  EXPECT_EQ(files[1].name, u"posix");
  EXPECT_EQ(files[2].name, u"ONLYDOS");
  EXPECT_EQ(files[3].name, u"BOTH");
}

TEST(RawNtfsDevice, ANameInAnotherRecordIsFoundThroughTheList) {
  const uint64_t base = MakeReference(20, 1), extension = MakeReference(21, 1);
  const auto volume =
      NtfsVolumeBuilder()
          .Record(20, RecordBuilder()
                          .StandardInformation()
                          .Resident(kAttributeList, {},
                                    RecordBuilder::ListValue({{kStandardInformation, 0, base, u""},
                                                              {kFileName, 0, extension, u""}}))
                          .Finish({}))
          .Record(21, RecordBuilder().FileName(kRoot, u"elsewhere").Finish({.baseReference = base}))
          .Build();
  const auto device = OpenWithJournal(volume);
  EXPECT_THAT(Enumerate(*device), ElementsAre(Listed{base, kRoot, u"elsewhere"}));
}

TEST(RawNtfsDevice, AListThatLeadsToARecordOfAnotherFileGivesNoName) {
  const uint64_t base = MakeReference(20, 1);
  const auto list = RecordBuilder::ListValue({{kFileName, 0, MakeReference(21, 1), u""},
                                              {kFileName, 0, MakeReference(20, 1), u""},
                                              {kFileName, 0, MakeReference(9'999, 1), u""}});
  const auto volume =
      NtfsVolumeBuilder()
          .Record(20, RecordBuilder().Resident(kAttributeList, {}, list).Finish({}))
          .Record(21, RecordBuilder().FileName(kRoot, u"stolen").Finish({.baseReference = base + 2}))
          .Build();
  const auto device = OpenWithJournal(volume);
  EXPECT_THAT(Enumerate(*device), testing::IsEmpty());
}

TEST(RawNtfsDevice, ADamagedRecordCostsThatRecordOnly) {
  auto torn = RecordBuilder().FileName(kRoot, u"torn").Finish({});
  torn[1'022] = std::byte{0x55};
  const auto volume =
      NtfsVolumeBuilder().File(20, kRoot, u"before").Record(21, torn).File(22, kRoot, u"behind").Build();
  const auto device = OpenWithJournal(volume);
  EXPECT_THAT(Enumerate(*device), ElementsAre(Listed{MakeReference(20, 1), kRoot, u"before"},
                                              Listed{MakeReference(22, 1), kRoot, u"behind"}));
  EXPECT_EQ(Enumerate(*device).size(), 2u) << "asked a second time";
}

TEST(RawNtfsDevice, TheMirrorStandsInForADamagedFirstRecord) {
  auto volume = NtfsVolumeBuilder().File(20, kRoot, u"a").Build();
  Bytes& mft = volume.stretches[kBuiltMftCluster * kBuiltClusterBytes];
  volume.stretches[2 * kBuiltClusterBytes].assign(mft.begin(), mft.begin() + kBuiltRecordBytes);
  std::fill_n(mft.begin(), kBuiltRecordBytes, std::byte{0});

  const auto device = OpenWithJournal(volume);

  ASSERT_NE(device, nullptr);
  EXPECT_THAT(Enumerate(*device), ElementsAre(Listed{MakeReference(20, 1), kRoot, u"a"}));
}

TEST(RawNtfsDevice, TheTableItselfMayBeSpreadOverSeveralRecords) {
  // Records 0 to 19 at cluster 4, the rest at cluster 100, which only record 15 tells.
  const uint64_t self = MakeReference(0, 1);
  const auto list = RecordBuilder::ListValue(
      {{kFileName, 0, self, u""}, {kData, 0, self, u""}, {kData, 5, MakeReference(15, 1), u""}});
  auto builder =
      NtfsVolumeBuilder()
          .Record(0, RecordBuilder()
                         .Resident(kAttributeList, {}, list)
                         .FileName(kRoot, u"$MFT")
                         .NonResident(kData, {}, MappingPairs({{4, 5}}), 24 * kBuiltRecordBytes)
                         .Finish({}))
          .Record(15, RecordBuilder()
                          .NonResident(kData, {}, MappingPairs({{100, 1}}), 0, 5)
                          .Finish({.baseReference = self}))
          .Record(19, RecordBuilder().FileName(kRoot, u"near").Finish({}));
  auto volume = builder.Build();
  Bytes& far = volume.stretches[100 * kBuiltClusterBytes];
  far.resize(kBuiltClusterBytes);
  const Bytes record = RecordBuilder().FileName(kRoot, u"far").Finish({});
  std::copy(record.begin(), record.end(), far.begin() + 2 * kBuiltRecordBytes);

  const auto device = OpenWithJournal(volume);

  ASSERT_NE(device, nullptr);
  EXPECT_THAT(Enumerate(*device), ElementsAre(Listed{MakeReference(19, 1), kRoot, u"near"},
                                              Listed{MakeReference(22, 1), kRoot, u"far"}));
}

TEST(RawNtfsDevice, TheRangeOfJournalPositionsIsHonoured) {
  const auto volume = NtfsVolumeBuilder()
                          .Journal(7, 4'096, Bytes(100))
                          .File(30, kRoot, u"old", 10)
                          .File(31, kRoot, u"middle", 500)
                          .File(32, kRoot, u"new", 900)
                          .Build();
  const auto device = OpenRawNtfs(volume.Open());
  const auto namesOf = [&](int64_t low, int64_t high) {
    std::vector<std::u16string> names;
    for (const Listed& file : Enumerate(*device, 30, low, high)) names.push_back(file.name);
    return names;
  };
  EXPECT_THAT(namesOf(0, 500), ElementsAre(u"old", u"middle"));
  EXPECT_THAT(namesOf(500, INT64_MAX), ElementsAre(u"middle", u"new"));
}

TEST(RawNtfsDevice, WithoutAJournalOldPositionsCountForNothing) {
  const auto volume = NtfsVolumeBuilder().File(30, kRoot, u"old", 123'456).Build();
  const auto device = OpenWithJournal(volume);
  EXPECT_EQ(Enumerate(*device, 30, 0, 0).size(), 1u);
}

TEST(RawNtfsDevice, AVolumeWithoutAJournalSaysSoUntilOneIsMade) {
  const auto volume = NtfsVolumeBuilder().Build();
  const auto device = OpenRawNtfs(volume.Open());
  Bytes data(56), block(4'096);
  EXPECT_EQ(Ask(*device, kFsctlQueryUsnJournal, {}, data).error, kErrorJournalNotActive);
  EXPECT_EQ(Ask(*device, kFsctlReadUsnJournal, {0, 0, 0, 0, 0}, block).error, kErrorJournalNotActive);
  EXPECT_EQ(Ask(*device, kFsctlEnumUsnData, {0, 0, 0}, block).error, kErrorJournalNotActive);
  EXPECT_EQ(Ask(*device, kFsctlDeleteUsnJournal, {0, 1}, {}).error, kErrorJournalNotActive);

  EXPECT_EQ(Ask(*device, kFsctlCreateUsnJournal, {0, 0}, {}).error, 0u);

  ASSERT_EQ(Ask(*device, kFsctlQueryUsnJournal, {}, data).error, 0u);
  EXPECT_EQ(LoadLe<int64_t>(data, 16), 0);
  const auto id = LoadLe<uint64_t>(data, 0);
  EXPECT_EQ(Ask(*device, kFsctlReadUsnJournal, {0, 0xFFFF'FFFF, 0, 0, id}, block).bytes, 8u);
  EXPECT_EQ(Ask(*device, kFsctlDeleteUsnJournal, {id, 1}, {}).error, 0u);
  EXPECT_EQ(Ask(*device, kFsctlQueryUsnJournal, {}, data).error, kErrorJournalNotActive);
}

// Records of a journal as they stand on disk.
class StoredJournal {
 public:
  explicit StoredJournal(uint64_t firstUsn) : firstUsn_(firstUsn) {}

  StoredJournal& Version2(uint64_t frn, std::u16string_view name, uint32_t reason) {
    const size_t offset = bytes_.size();
    bytes_.resize(offset + UsnRecordLength(name.size()));
    PutUsnRecord(std::span(bytes_).subspan(offset),
                 {.frn = FileReference(frn),
                  .parentFrn = FileReference(kRoot),
                  .usn = static_cast<int64_t>(firstUsn_ + offset),
                  .reason = reason,
                  .name = std::as_bytes(std::span(name))},
                 0);
    return *this;
  }
  StoredJournal& Version3(uint64_t frn, uint64_t frnHigh, std::u16string_view name, uint32_t reason) {
    const size_t offset = bytes_.size();
    const size_t length = (76 + name.size() * 2 + 7) / 8 * 8;
    bytes_.resize(offset + length);
    const auto record = std::span(bytes_).subspan(offset);
    StoreLe(record, 0, static_cast<uint32_t>(length));
    StoreLe(record, 4, uint16_t{3});
    StoreLe(record, 8, frn);
    StoreLe(record, 16, frnHigh);
    StoreLe(record, 24, kRoot);
    StoreLe(record, 40, static_cast<uint64_t>(firstUsn_ + offset));
    StoreLe(record, 56, reason);
    StoreLe(record, 72, static_cast<uint16_t>(name.size() * 2));
    StoreLe(record, 74, uint16_t{76});
    const auto units = std::as_bytes(std::span(name));
    std::copy(units.begin(), units.end(), record.begin() + 76);
    return *this;
  }
  // A record of range tracking: no name, no attributes.
  StoredJournal& Version4() {
    const size_t offset = bytes_.size();
    bytes_.resize(offset + 80);
    StoreLe(std::span(bytes_), offset, uint32_t{80});
    StoreLe(std::span(bytes_), offset + 4, uint16_t{4});
    return *this;
  }
  StoredJournal& Garbage(uint32_t length) {
    const size_t offset = bytes_.size();
    bytes_.resize(offset + 64, std::byte{0xAA});
    StoreLe(std::span(bytes_), offset, length);
    return *this;
  }
  StoredJournal& ToPageEnd() {
    bytes_.resize((bytes_.size() + 4'095) / 4'096 * 4'096);
    return *this;
  }
  const Bytes& Contents() const { return bytes_; }

 private:
  uint64_t firstUsn_;
  Bytes bytes_;
};

constexpr uint64_t kFirstUsn = 16 * 4'096, kJournalId = 0x77;

std::vector<std::u16string> ReadNames(VolumeDevice& device, uint64_t startUsn,
                                      uint64_t mask = 0xFFFF'FFFF, size_t blockBytes = 4'096) {
  std::vector<std::u16string> names;
  Bytes block(blockBytes);
  std::u16string name;
  for (;;) {
    const auto reply = Ask(device, kFsctlReadUsnJournal, {startUsn, mask, 0, 0, kJournalId}, block);
    EXPECT_EQ(reply.error, 0u);
    if (reply.error != 0 || reply.bytes <= 8) return names;
    UsnCursor cursor{.block = std::span(block).first(reply.bytes)};
    while (const auto record = NextUsnRecord(cursor)) names.emplace_back(NameUnits(*record, name));
    startUsn = LoadLe<uint64_t>(block, 0);
  }
}

std::unique_ptr<VolumeDevice> OpenJournal(const MemoryVolume& volume) {
  return OpenRawNtfs(volume.Open());
}

// The 512 bytes that begin at or before each place of the text.
std::vector<std::pair<uint64_t, uint64_t>> PlacesOf(const MemoryVolume& volume,
                                                    std::u16string_view text) {
  const auto wanted = std::as_bytes(std::span(text));
  std::vector<std::pair<uint64_t, uint64_t>> places;
  for (const auto& [start, bytes] : volume.stretches) {
    const auto found = std::search(bytes.begin(), bytes.end(), wanted.begin(), wanted.end());
    if (found == bytes.end()) continue;
    const uint64_t place = (start + static_cast<uint64_t>(found - bytes.begin())) / 512 * 512;
    places.emplace_back(place, place + 512);
  }
  return places;
}

TEST(RawNtfsJournal, TellsWhereItBeginsAndEnds) {
  const auto stored = StoredJournal(kFirstUsn).Version2(40, u"a", 0x100).Version2(41, u"b", 0x100);
  const auto volume = NtfsVolumeBuilder().Journal(kJournalId, kFirstUsn, stored.Contents()).Build();
  const auto device = OpenJournal(volume);
  Bytes data(56);
  ASSERT_EQ(Ask(*device, kFsctlQueryUsnJournal, {}, data).error, 0u);
  EXPECT_EQ(LoadLe<uint64_t>(data, 0), kJournalId);
  EXPECT_EQ(LoadLe<uint64_t>(data, 8), kFirstUsn);
  EXPECT_EQ(LoadLe<uint64_t>(data, 16), kFirstUsn + stored.Contents().size());
  EXPECT_EQ(LoadLe<uint64_t>(data, 40), 0x200'0000u);
  EXPECT_EQ(LoadLe<uint64_t>(data, 48), 0x40'0000u);
}

TEST(RawNtfsJournal, RecordsOfVersionsTwoAndThreeAreRead) {
  const auto stored = StoredJournal(kFirstUsn)
                          .Version2(40, u"two", 0x100)
                          .Version4()
                          .Version3(41, 0, u"three", 0x100)
                          .Version3(42, 1, u"too long a reference", 0x100)
                          .Version2(43, u"end", 0x100);
  const auto volume = NtfsVolumeBuilder().Journal(kJournalId, kFirstUsn, stored.Contents()).Build();
  const auto device = OpenJournal(volume);
  EXPECT_THAT(ReadNames(*device, kFirstUsn), ElementsAre(u"two", u"three", u"end"));
  EXPECT_THAT(ReadNames(*device, 0), ElementsAre(u"two", u"three", u"end")) << "0 is the first one";
}

TEST(RawNtfsJournal, OnlyWantedReasonsAreGiven) {
  const auto stored = StoredJournal(kFirstUsn)
                          .Version2(40, u"created", 0x100)
                          .Version2(41, u"written", 0x1)
                          .Version2(42, u"closed", 0x8000'0100);
  const auto volume = NtfsVolumeBuilder().Journal(kJournalId, kFirstUsn, stored.Contents()).Build();
  const auto device = OpenJournal(volume);
  EXPECT_THAT(ReadNames(*device, kFirstUsn, 0x3300), ElementsAre(u"created", u"closed"));
  const uint64_t onlyOnClose = uint64_t{1} << 32;
  EXPECT_THAT(ReadNames(*device, kFirstUsn, 0x3300 | onlyOnClose), ElementsAre(u"closed"));
}

TEST(RawNtfsJournal, SmallBlocksGiveAllRecordsOnce) {
  StoredJournal stored(kFirstUsn);
  std::vector<std::u16string> expected;
  for (int i = 0; i < 300; ++i) {
    expected.push_back(u"file" + std::u16string(static_cast<size_t>(i % 40), u'x'));
    if (stored.Contents().size() % 4'096 > 3'900) stored.ToPageEnd();
    stored.Version2(100 + static_cast<uint64_t>(i), expected.back(), 0x100);
  }
  const auto volume = NtfsVolumeBuilder().Journal(kJournalId, kFirstUsn, stored.Contents()).Build();
  const auto device = OpenJournal(volume);
  for (const size_t blockBytes : {size_t{160}, size_t{1'000}, size_t{65'536}}) {
    EXPECT_EQ(ReadNames(*device, kFirstUsn, 0x100, blockBytes), expected) << blockBytes;
  }
}

TEST(RawNtfsJournal, DamageCostsTheRestOfItsPage) {
  for (const uint32_t length : {0u, 8u, 61u, 5'000u, 0xFFFF'FFF8u}) {
    const auto stored = StoredJournal(kFirstUsn)
                            .Version2(40, u"before", 0x100)
                            .Garbage(length)
                            .Version2(41, u"lost", 0x100)
                            .ToPageEnd()
                            .Version2(42, u"next page", 0x100);
    const auto volume = NtfsVolumeBuilder().Journal(kJournalId, kFirstUsn, stored.Contents()).Build();
    const auto device = OpenJournal(volume);
    EXPECT_THAT(ReadNames(*device, kFirstUsn), ElementsAre(u"before", u"next page")) << length;
  }
}

TEST(RawNtfsJournal, HalfAUnitOfANameIsLeftOut) {
  for (const uint16_t length : {uint16_t{1}, uint16_t{5}, uint16_t{13}, uint16_t{21}}) {
    Bytes bytes = StoredJournal(kFirstUsn)
                      .Version2(40, std::u16string(size_t{length} / 2 + 1, u'n'), 0x100)
                      .Version2(41, u"next", 0x100)
                      .Contents();
    StoreLe(std::span(bytes), 56, length);
    const auto volume = NtfsVolumeBuilder().Journal(kJournalId, kFirstUsn, bytes).Build();
    const auto device = OpenJournal(volume);
    const std::u16string name(size_t{length} / 2, u'n');
    EXPECT_THAT(ReadNames(*device, kFirstUsn), ElementsAre(name, u"next")) << length;
    // No byte behind a block that is exactly full.
    const size_t full = 8 + std::max(UsnRecordLength(name.size()), UsnRecordLength(4));
    EXPECT_THAT(ReadNames(*device, kFirstUsn, 0x100, full), ElementsAre(name, u"next")) << length;
  }
}

TEST(RawNtfsJournal, ChangesThatCannotBeReadAreAskedForAgain) {
  const auto stored = StoredJournal(kFirstUsn)
                          .Version2(40, u"first page", 0x100)
                          .ToPageEnd()
                          .Version2(41, u"second page", 0x100);
  auto volume = NtfsVolumeBuilder().Journal(kJournalId, kFirstUsn, stored.Contents()).Build();
  const auto device = OpenJournal(volume);
  volume.badPlaces = PlacesOf(volume, u"second page");
  ASSERT_FALSE(volume.badPlaces.empty());
  Bytes block(65'536);
  const auto read = [&](uint64_t start) {
    return Ask(*device, kFsctlReadUsnJournal, {start, 0x100, 0, 0, kJournalId}, block);
  };
  EXPECT_EQ(read(kFirstUsn).error, 0u);
  const auto position = LoadLe<uint64_t>(block, 0);
  EXPECT_LE(position, kFirstUsn + 4'096);
  EXPECT_EQ(read(kFirstUsn + 4'096).error, kErrorReadFault);
  volume.badPlaces.clear();
  EXPECT_THAT(ReadNames(*device, position), testing::Contains(u"second page"));
}

TEST(RawNtfsJournal, PositionsOutsideAreRefused) {
  const auto stored = StoredJournal(kFirstUsn).Version2(40, u"a", 0x100);
  const auto volume = NtfsVolumeBuilder().Journal(kJournalId, kFirstUsn, stored.Contents()).Build();
  const auto device = OpenJournal(volume);
  Bytes block(4'096);
  const uint64_t end = kFirstUsn + stored.Contents().size();
  EXPECT_EQ(Ask(*device, kFsctlReadUsnJournal, {kFirstUsn - 8, 0x100, 0, 0, kJournalId}, block).error,
            kErrorJournalEntryDeleted);
  EXPECT_EQ(Ask(*device, kFsctlReadUsnJournal, {end + 8, 0x100, 0, 0, kJournalId}, block).error,
            kErrorInvalidParameter);
  EXPECT_EQ(Ask(*device, kFsctlReadUsnJournal, {kFirstUsn, 0x100, 0, 0, kJournalId + 1}, block).error,
            kErrorInvalidParameter);
  EXPECT_EQ(Ask(*device, kFsctlReadUsnJournal, {end, 0x100, 0, 0, kJournalId}, block).bytes, 8u);
}

TEST(RawNtfsJournal, GrowthIsSeenByTheNextRead) {
  auto stored = StoredJournal(kFirstUsn).Version2(40, u"a", 0x100);
  auto volume = NtfsVolumeBuilder().Journal(kJournalId, kFirstUsn, stored.Contents()).Build();
  const auto device = OpenJournal(volume);
  EXPECT_THAT(ReadNames(*device, kFirstUsn), ElementsAre(u"a"));
  const uint64_t end = kFirstUsn + stored.Contents().size();

  stored.Version2(41, u"b", 0x100);
  volume = NtfsVolumeBuilder().Journal(kJournalId, kFirstUsn, stored.Contents()).Build();

  EXPECT_THAT(ReadNames(*device, end), ElementsAre(u"b"));
}

TEST(RawNtfsDevice, AHoleInTheTableIsPassedAtOnce) {
  // 4 PiB of table, of which the first five clusters and the last are there.
  constexpr uint64_t kClusters = uint64_t{1} << 40;
  auto volume =
      NtfsVolumeBuilder()
          .Record(0, RecordBuilder()
                         .FileName(kRoot, u"$MFT")
                         .NonResident(kData, {}, MappingPairs({{4, 5}, {-1, kClusters - 6}, {100, 1}}),
                                      kClusters * kBuiltClusterBytes)
                         .Finish({}))
          .Build();
  volume.stretches[100 * kBuiltClusterBytes] = RecordBuilder().FileName(kRoot, u"last").Finish({});
  volume.stretches[0] = MakeBootSector(kBuiltClusterBytes, kBuiltRecordBytes, kClusters, 4, 2);
  volume.size = kClusters * kBuiltClusterBytes;
  const auto device = OpenWithJournal(volume);
  ASSERT_NE(device, nullptr);
  EXPECT_THAT(Enumerate(*device),
              ElementsAre(Listed{MakeReference((kClusters - 1) * 4, 1), kRoot, u"last"}));
}

TEST(RawNtfsJournal, AnEndlessHoleIsPassedAtOnce) {
  // A journal that says it ends far behind its last stored byte.
  const auto volume =
      NtfsVolumeBuilder()
          .Journal(kJournalId, 0, {})
          .Record(24, RecordBuilder()
                          .FileName(MakeReference(11, 1), u"$UsnJrnl")
                          .NonResident(kData, u"$J", MappingPairs({{-1, uint64_t{1} << 40}}),
                                       uint64_t{1} << 52)
                          .Resident(kData, u"$Max", Bytes(32))
                          .Finish({}))
          .Build();
  const auto device = OpenJournal(volume);
  Bytes data(56), block(4'096);
  ASSERT_EQ(Ask(*device, kFsctlQueryUsnJournal, {}, data).error, 0u);
  const auto first = LoadLe<uint64_t>(data, 8);
  EXPECT_EQ(first, uint64_t{1} << 52);
  EXPECT_EQ(Ask(*device, kFsctlReadUsnJournal, {first, 0x100, 0, 0, 0}, block).bytes, 8u);
}

TEST(RawNtfsDevice, TellsTheNumbersOfTheVolume) {
  const auto volume = NtfsVolumeBuilder().File(20, kRoot, u"a").Build();
  const auto device = OpenRawNtfs(volume.Open());
  Bytes data(96);
  ASSERT_EQ(Ask(*device, kFsctlGetNtfsVolumeData, {}, data).bytes, 96u);
  EXPECT_EQ(LoadLe<uint64_t>(data, 0), 0x1122'3344'5566'7788u);
  EXPECT_EQ(LoadLe<uint64_t>(data, 16), 4'096u);
  EXPECT_EQ(LoadLe<uint32_t>(data, 40), 512u);
  EXPECT_EQ(LoadLe<uint32_t>(data, 44), 4'096u);
  EXPECT_EQ(LoadLe<uint32_t>(data, 48), 1'024u);
  EXPECT_EQ(LoadLe<uint64_t>(data, 56), 21u * 1'024);
  EXPECT_EQ(LoadLe<uint64_t>(data, 64), kBuiltMftCluster);
  Bytes shorter(95);
  EXPECT_EQ(Ask(*device, kFsctlGetNtfsVolumeData, {}, shorter).error, kErrorMoreData);
}

TEST(RawNtfsDevice, GivesTheRecordAskedForOrTheNextOneBelow) {
  const auto volume = NtfsVolumeBuilder().File(20, kRoot, u"a").File(30, kRoot, u"b").Build();
  const auto device = OpenRawNtfs(volume.Open());
  Bytes output(12 + 1'024);
  for (const auto& [asked, given] :
       {std::pair(20u, 20u), {25u, 20u}, {30u, 30u}, {9'999u, 30u}, {4u, 0u}}) {
    ASSERT_EQ(Ask(*device, kFsctlGetNtfsFileRecord, {asked}, output).bytes, output.size());
    EXPECT_EQ(LoadLe<uint64_t>(output, 0), given);
    EXPECT_EQ(LoadLe<uint32_t>(output, 8), 1'024u);
    EXPECT_EQ(LoadLe<uint32_t>(output, 12), 0x454C'4946u);
  }
}

TEST(RawNtfsDevice, AfterCloseEveryCallIsRefused) {
  const auto volume = NtfsVolumeBuilder().Build();
  const auto device = OpenRawNtfs(volume.Open());
  Bytes data(96);
  EXPECT_EQ(device->Close(), 0u);
  EXPECT_EQ(Ask(*device, kFsctlGetNtfsVolumeData, {}, data).error, kErrorInvalidHandle);
  EXPECT_EQ(device->ReadAt(ByteOffset(0), data).error, kErrorInvalidHandle);
  EXPECT_EQ(device->Close(), 0u);
}

TEST(RawNtfsDevice, AnUnknownCodeAndShortInputAreRefused) {
  const auto volume = NtfsVolumeBuilder().Build();
  const auto device = OpenWithJournal(volume);
  Bytes block(4'096);
  EXPECT_EQ(Ask(*device, 0x12'3456, {}, block).error, kErrorInvalidFunction);
  EXPECT_EQ(Ask(*device, kFsctlEnumUsnData, {0, 0}, block).error, kErrorInvalidParameter);
  EXPECT_EQ(Ask(*device, kFsctlReadUsnJournal, {0}, block).error, kErrorInvalidParameter);
  EXPECT_EQ(Ask(*device, kFsctlGetNtfsFileRecord, {}, block).error, kErrorInvalidParameter);
}

TEST(RawNtfsDevice, WhatIsNoVolumeIsRefused) {
  MemoryVolume empty, zeros{.size = 1 << 20};
  EXPECT_EQ(OpenRawNtfs(empty.Open()), nullptr);
  EXPECT_EQ(OpenRawNtfs(zeros.Open()), nullptr);
  EXPECT_EQ(OpenRawNtfs(nullptr), nullptr);
  auto bootOnly = NtfsVolumeBuilder().Build();
  bootOnly.stretches.erase(kBuiltMftCluster * kBuiltClusterBytes);
  EXPECT_EQ(OpenRawNtfs(bootOnly.Open()), nullptr);
}

}  // namespace
}  // namespace quilmark
