// An NTFS volume in a file, with each call to the system failing in turn.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/byte_source.h"
#include "platform/bytes.h"
#include "platform/ntfs/image_info.h"
#include "platform/ntfs/mft_reader.h"
#include "platform/ntfs/raw_ntfs_device.h"
#include "platform/usn_record.h"
#include "support/ntfs_builder.h"
#include "support/scratch_folder.h"
#include "support/system_faults.h"

namespace quilmark {
namespace {

constexpr uint64_t kRoot = MakeReference(kRootRecord.value, 1), kJournalId = 7;
constexpr FileTime kDate = 133'000'000'000'000'000;
constexpr size_t kJournalFiles = 200;  // several pages of records

using Names = std::vector<std::u16string>;

Bytes JournalRecords() {
  Bytes page(4'096), records;
  size_t used = 0;
  for (size_t i = 0; i < kJournalFiles; ++i) {
    const std::string digits = std::to_string(i);
    const std::u16string name(digits.begin(), digits.end());
    const size_t length = UsnRecordLength(name.size());
    if (used + length > page.size()) {  // no record crosses a page
      records.insert(records.end(), page.begin(), page.end());
      page.assign(page.size(), std::byte{0});
      used = 0;
    }
    PutUsnRecord(std::span(page).subspan(used),
                 {.frn = FileReference(40 + i),
                  .parentFrn = FileReference(kRoot),
                  .usn = static_cast<int64_t>(records.size() + used),
                  .reason = kUsnReasonFileCreate,
                  .name = std::as_bytes(std::span(name))},
                 0);
    used += length;
  }
  records.insert(records.end(), page.begin(), page.end());
  return records;
}

// Files 20 to 29, of which 25 has its data in a list and another record.
std::string Image() {
  NtfsVolumeBuilder builder;
  for (uint64_t number = 20; number < 30; ++number) {
    builder.File(number, kRoot, std::u16string(1, static_cast<char16_t>(u'a' + number)));
  }
  const uint64_t listed = MakeReference(25, 1);
  builder
      .Record(25, RecordBuilder()
                      .StandardInformation()
                      .Dates(kDate, kDate)
                      .NonResident(kAttributeList, {}, MappingPairs({{200, 1}}), 64)
                      .FileName(kRoot, u"listed")
                      .Finish({}))
      .Cluster(200, RecordBuilder::ListValue(
                        {{kStandardInformation, 0, listed, {}}, {kData, 0, MakeReference(31, 1), {}}}))
      .Record(31, RecordBuilder().Resident(kData, {}, Bytes(77)).Finish({.baseReference = listed}));
  std::string image = builder.Journal(kJournalId, 0, JournalRecords()).Image();
  image.resize(1'010 * kBuiltClusterBytes);  // nothing stands behind the journal
  return image;
}

struct ImageFailures : testing::TestWithParam<FaultKind> {
  ImageFailures() { folder.MakeFile("disk.img", Image()); }

  std::unique_ptr<VolumeDevice> Open() { return OpenRawNtfs(OpenByteSource(path)); }

  // As many records as the device gives from `position` on, until it fails or has no more.
  static Names Take(VolumeDevice& device, uint32_t code, std::vector<uint64_t>& input) {
    Names names;
    Bytes block(4'096);
    std::u16string name;
    for (;;) {
      const auto reply = device.Control(code, std::as_bytes(std::span(input)), block);
      if (reply.error != 0 || reply.bytes < kUsnPositionBytes) return names;
      UsnCursor cursor{.block = std::span(block).first(reply.bytes)};
      while (const auto record = NextUsnRecord(cursor)) names.emplace_back(NameUnits(*record, name));
      EXPECT_FALSE(cursor.malformed);
      const auto next = LoadLe<uint64_t>(block, 0);
      if (next == input[0]) return names;
      input[0] = next;
    }
  }
  static Names Enumerate(VolumeDevice& device) {
    std::vector<uint64_t> range = {0, 0, INT64_MAX};
    return Take(device, kFsctlEnumUsnData, range);
  }
  static std::vector<uint64_t> FromTheBeginning() { return {0, 0xFFFF'FFFF, 0, 0, kJournalId}; }

  ScratchFolder folder;
  const std::u16string path = folder.PathOf(u"disk.img");
};
INSTANTIATE_TEST_SUITE_P(Each, ImageFailures, testing::ValuesIn(kAllFaultKinds));

TEST_P(ImageFailures, FilesAreThoseOfTheVolume) {
  const Names whole = Enumerate(*Open());
  ASSERT_GE(whole.size(), 11u);
  FailEachCall(GetParam(), [&](const auto& failing) {
    Names names;
    bool isOpen = false;
    const bool hasFailed = failing([&] {
      const auto device = Open();
      isOpen = device != nullptr;
      if (isOpen) names = Enumerate(*device);
    });
    EXPECT_TRUE(std::includes(whole.begin(), whole.end(), names.begin(), names.end()));
    EXPECT_TRUE(hasFailed || names == whole);
  });
}

TEST_P(ImageFailures, AChangeIsReadOnceItCanBeAndOnlyOnce) {
  auto whole = FromTheBeginning();
  const Names changes = Take(*Open(), kFsctlReadUsnJournal, whole);
  ASSERT_EQ(changes.size(), kJournalFiles);
  FailEachCall(GetParam(), [&](const auto& failing) {
    const auto device = Open();
    auto position = FromTheBeginning();
    Names names;
    failing([&] { names = Take(*device, kFsctlReadUsnJournal, position); });
    const Names rest = Take(*device, kFsctlReadUsnJournal, position);
    names.insert(names.end(), rest.begin(), rest.end());
    EXPECT_TRUE(names == changes) << names.size();
  });
}

TEST_P(ImageFailures, AFileIsKnownWholeOrNotAtAll) {
  FailEachCall(GetParam(), [&](const auto& failing) {
    std::optional<FileFacts> facts;
    const bool hasFailed = failing([&] {
      const auto device = Open();
      if (device != nullptr) facts = device->ReadFacts(MakeReference(RecordNumber(25), 1));
    });
    EXPECT_TRUE(hasFailed || facts.has_value());
    EXPECT_TRUE(!facts || (facts->size == 77 && facts->modified == kDate));
  });
}

TEST_P(ImageFailures, EveryOtherQuestionIsAnsweredRightOrNotAtAll) {
  for (const uint32_t code : {kFsctlGetNtfsVolumeData, kFsctlGetNtfsFileRecord, kFsctlQueryUsnJournal,
                              kFsctlCreateUsnJournal, kFsctlDeleteUsnJournal}) {
    SCOPED_TRACE(code);
    const std::vector<uint64_t> input = {25, 0};
    Bytes whole(4'096), answer(4'096);
    const auto expected = Open()->Control(code, std::as_bytes(std::span(input)), whole);
    FailEachCall(GetParam(), [&](const auto& failing) {
      VolumeDevice::Reply reply{.error = kErrorReadFault};
      const bool hasFailed = failing([&] {
        const auto device = Open();
        if (device != nullptr) reply = device->Control(code, std::as_bytes(std::span(input)), answer);
      });
      EXPECT_TRUE(hasFailed || reply.error == expected.error);
      // The record below is the answer for one that is no record; the journal of nothing is empty.
      const bool isOther = code == kFsctlGetNtfsFileRecord || code == kFsctlQueryUsnJournal;
      const bool isSame = std::equal(
          answer.begin(), answer.begin() + static_cast<ptrdiff_t>(reply.bytes), whole.begin());
      EXPECT_TRUE(reply.error != 0 || isSame || (isOther && hasFailed));
    });
  }
}

TEST_P(ImageFailures, AVolumeTellsItsLabelOrNothing) {
  const auto whole = VolumeInfoOfImage(path);
  ASSERT_TRUE(whole.has_value());
  FailEachCall(GetParam(), [&](const auto& failing) {
    std::optional<VolumeInfo> info;
    const bool hasFailed = failing([&] { info = VolumeInfoOfImage(path); });
    EXPECT_TRUE(hasFailed || info.has_value());
    EXPECT_TRUE(!info || info->serial == whole->serial);
  });
}

}  // namespace
}  // namespace quilmark
