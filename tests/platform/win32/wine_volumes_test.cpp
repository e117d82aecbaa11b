// Drives as Wine shows them. The test run gives the prefix a drive W: whose device is the bytes of an
// NTFS image (tools/wine_env.sh).
#include "platform/win32/wine_volumes.h"

#include <gtest/gtest.h>

#include "platform/bytes.h"
#include "platform/drives.h"
#include "platform/usn_record.h"
#include "platform/volume_device.h"

namespace quilmark {
namespace {

TEST(WineVolumes, ADriveWithoutAJournalHasTheNameOfAWalkedVolume) {
  ASSERT_TRUE(IsWine());
  EXPECT_EQ(RecordSourceOf(u'C'), RecordSource::kNone);
  EXPECT_EQ(ReadVolumeInfo(u'C')->fileSystem, u"wine");
}

TEST(WineVolumes, ADriveOverAnNtfsImageIsReadByItsBytes) {
  EXPECT_EQ(RecordSourceOf(u'W'), RecordSource::kRawBytes);
  EXPECT_EQ(ReadVolumeInfo(u'W')->fileSystem, u"NTFS");

  uint32_t error = 0;
  const auto device = OpenVolumeDevice(u"W:", VolumeAccess::kRead, error);
  ASSERT_NE(device, nullptr);
  EXPECT_EQ(device->Control(kFsctlCreateUsnJournal, {}, {}).error, 0u);
  std::vector<std::byte> block(65'536), range(24);
  StoreLe(std::span(range), 16, INT64_MAX);
  const auto reply = device->Control(kFsctlEnumUsnData, range, block);
  ASSERT_EQ(reply.error, 0u);
  UsnCursor cursor{.block = std::span(block).first(reply.bytes)};
  std::u16string name;
  const auto first = NextUsnRecord(cursor);
  ASSERT_TRUE(first.has_value());
  EXPECT_EQ(NameUnits(*first, name), u"$MFT");
  const auto facts = device->ReadFacts(first->frn);
  ASSERT_TRUE(facts.has_value());
  EXPECT_GT(facts->size, 0u);
}

}  // namespace
}  // namespace quilmark
