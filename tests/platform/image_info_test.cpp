#include "platform/ntfs/image_info.h"

#include <gtest/gtest.h>

#include "platform/ntfs/mft_reader.h"
#include "support/ntfs_builder.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

constexpr uint64_t kRoot = MakeReference(kRootRecord.value, 1);
constexpr uint32_t kVolumeName = 0x60;

// An image of a volume with this label.
std::string ImageWithLabel(std::u16string_view label) {
  const auto units = std::as_bytes(std::span(label));
  return NtfsVolumeBuilder()
      .Record(3, RecordBuilder()
                     .FileName(kRoot, u"$Volume")
                     .Resident(kVolumeName, {}, Bytes(units.begin(), units.end()))
                     .Finish({}))
      .Image();
}

TEST(ImageInfo, TellsTheLabelAndTheLowHalfOfTheSerial) {
  ScratchFolder folder;
  folder.MakeFile("disk.img", ImageWithLabel(u"Daten 2024"));
  const auto info = VolumeInfoOfImage(folder.PathOf(u"disk.img"));
  ASSERT_TRUE(info.has_value());
  EXPECT_EQ(info->fileSystem, kNtfs);
  EXPECT_EQ(info->label, u"Daten 2024");
  EXPECT_EQ(info->serial, 0x5566'7788u);
}

TEST(ImageInfo, ALabelEndsAfter32Units) {
  ScratchFolder folder;
  folder.MakeFile("disk.img", ImageWithLabel(std::u16string(40, u'x')));
  const auto info = VolumeInfoOfImage(folder.PathOf(u"disk.img"));
  ASSERT_TRUE(info.has_value());
  EXPECT_EQ(info->label, std::u16string(32, u'x'));
}

TEST(ImageInfo, AVolumeWithoutALabelHasAnEmptyOne) {
  ScratchFolder folder;
  folder.MakeFile("disk.img", NtfsVolumeBuilder().File(30, kRoot, u"a.txt").Image());
  const auto info = VolumeInfoOfImage(folder.PathOf(u"disk.img"));
  ASSERT_TRUE(info.has_value());
  EXPECT_EQ(info->label, u"");
}

TEST(ImageInfo, WhatIsNoVolumeHasNone) {
  ScratchFolder folder;
  folder.MakeFile("text", "no volume");
  EXPECT_FALSE(VolumeInfoOfImage(folder.PathOf(u"text")).has_value());
  EXPECT_FALSE(VolumeInfoOfImage(folder.PathOf(u"missing")).has_value());
  EXPECT_EQ(MissingBytesOfImage(folder.PathOf(u"text")), 0u);
  EXPECT_EQ(MissingBytesOfImage(folder.PathOf(u"missing")), 0u);
}

TEST(ImageInfo, CountsTheBytesThatAnImageLacks) {
  ScratchFolder folder;
  std::string image = ImageWithLabel(u"whole");
  folder.MakeFile("whole.img", image);
  EXPECT_EQ(MissingBytesOfImage(folder.PathOf(u"whole.img")), 0u);
  constexpr size_t kVolumeBytes = 4'096 * kBuiltClusterBytes;
  image.resize(kVolumeBytes - 1'000);
  folder.MakeFile("short.img", image);
  EXPECT_EQ(MissingBytesOfImage(folder.PathOf(u"short.img")), 1'000u);
}

}  // namespace
}  // namespace quilmark
