#include "platform/drives.h"

#include <gtest/gtest.h>

#include "support/mapped_drive.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

constexpr uint32_t kBitOfQ = 1u << 16;
constexpr uint32_t kBitOfR = 1u << 17;

TEST(Drives, NtfsBehindALetterThatLeadsElsewhereIsNotReadByItsRecords) {
  const std::u16string_view disk = u"\\Device\\HarddiskVolume3";
  EXPECT_EQ(FileSystemToRead(u"NTFS", {.device = disk}), u"NTFS");
  EXPECT_EQ(FileSystemToRead(u"NTFS", {.isRemote = true, .device = u"\\Device\\LanmanRedirector"}),
            kNtfsElsewhere);
  EXPECT_EQ(FileSystemToRead(u"ntfs", {.isRemote = true}), kNtfsElsewhere);
  EXPECT_EQ(FileSystemToRead(u"NTFS", {.device = u"\\??\\C:\\Users"}), kNtfsElsewhere);
  EXPECT_EQ(FileSystemToRead(u"NTFS", {}), u"NTFS") << "a letter that tells nothing of itself";
  EXPECT_EQ(FileSystemToRead(u"FAT32", {.isRemote = true, .device = u"\\??\\C:\\Users"}), u"FAT32");
}

TEST(Drives, OnlyLettersCanBeMapped) {
  const ScratchFolder folder;
  for (const char16_t other : {u'@', u'[', u'`', u'{', u'1', u'\u00C4', u'\0', u':'}) {
    EXPECT_FALSE(MapDrive(other, folder.Path())) << static_cast<int>(other);
  }
  const MappedDrive first(u'A', folder.Path()), last(u'z', folder.Path());
  EXPECT_EQ(LogicalDriveMask(), (1u << 0) | (1u << 25));
}

TEST(Drives, AMappingHidesEveryOtherDrive) {
  const ScratchFolder folder;
  const uint32_t before = LogicalDriveMask();
  {
    const MappedDrive first(u'Q', folder.Path()), second(u'r', folder.Path());
    EXPECT_EQ(LogicalDriveMask(), kBitOfQ | kBitOfR);
    EXPECT_FALSE(ReadVolumeInfo(u'C').has_value());
  }
  EXPECT_EQ(LogicalDriveMask(), before);
  EXPECT_EQ(MappedRoot(u'Q'), std::nullopt);
}

TEST(Drives, ASecondMappingTakesTheLetterOver) {
  const ScratchFolder former, latter;
  const MappedDrive first(u'Q', former.Path()), second(u'Q', latter.Path());
  EXPECT_EQ(MappedRoot(u'Q'), latter.Path());
  EXPECT_EQ(MappedRoot(u'q'), latter.Path());
  EXPECT_EQ(MappedRoot(u'R'), std::nullopt);
}

TEST(Drives, TheRootStandsInThePlaceOfTheLetter) {
  const MappedDrive drive(u'Q', u"R:\\some\\root\\");
  EXPECT_EQ(MappedRoot(u'Q'), u"R:\\some\\root");
  EXPECT_EQ(ResolveMappedPath(u"Q:"), u"R:\\some\\root");
  EXPECT_EQ(ResolveMappedPath(u"Q:\\"), u"R:\\some\\root");
  EXPECT_EQ(ResolveMappedPath(u"q:\\a\\b.txt"), u"R:\\some\\root\\a\\b.txt");
}

TEST(Drives, ARootThatEndsWithASeparatorGetsNoSecondOne) {
  const MappedDrive first(u'Q', u"\\"), second(u'R', u"X:\\");
  EXPECT_EQ(ResolveMappedPath(u"Q:\\"), u"\\");
  EXPECT_EQ(ResolveMappedPath(u"Q:\\usr\\lib"), u"\\usr\\lib");
  EXPECT_EQ(ResolveMappedPath(u"R:"), u"X:\\");
  EXPECT_EQ(ResolveMappedPath(u"R:\\a"), u"X:\\a");
}

TEST(Drives, OtherPathsStayAsTheyAre) {
  const MappedDrive drive(u'Q', u"R:\\root");
  for (const char16_t* path : {u"", u"Q", u"R:\\a", u"\\Q:\\a", u"Q:a", u"\\\\?\\Q:\\a", u"QQ:\\a"}) {
    EXPECT_EQ(ResolveMappedPath(path), path);
  }
}

TEST(Drives, APathBelowARootIsFoundOnItsDrive) {
  const MappedDrive drive(u'Q', u"\\srv\\data");
  EXPECT_EQ(MappedPathOf(u"\\srv\\data\\me\\Desktop"), u"Q:\\me\\Desktop");
  EXPECT_EQ(MappedPathOf(u"\\srv\\data"), u"Q:\\");
  EXPECT_EQ(MappedPathOf(u"\\srv\\data\\"), u"Q:\\");
  EXPECT_EQ(MappedPathOf(u"\\srv\\database"), std::nullopt);
  EXPECT_EQ(MappedPathOf(u"\\srv"), std::nullopt);
  EXPECT_EQ(MappedPathOf(u""), std::nullopt);
}

TEST(Drives, TheDeepestRootWins) {
  const MappedDrive first(u'A', u"\\"), second(u'B', u"\\srv\\data\\deep"), third(u'C', u"\\srv");
  EXPECT_EQ(MappedPathOf(u"\\srv\\data\\deep\\a"), u"B:\\a");
  EXPECT_EQ(MappedPathOf(u"\\srv\\data\\a"), u"C:\\data\\a");
  EXPECT_EQ(MappedPathOf(u"\\etc\\a"), u"A:\\etc\\a");
}

TEST(Drives, TheFirstOfTwoLettersOfOneRootIsFound) {
  const MappedDrive second(u'R', u"\\srv"), first(u'Q', u"\\srv");
  EXPECT_EQ(MappedPathOf(u"\\srv\\a"), u"Q:\\a");
}

TEST(Drives, AFolderKeepsItsSerialUnderAnyLetter) {
  const ScratchFolder one, other;
  const MappedDrive first(u'Q', one.Path()), second(u'R', one.Path()), third(u'S', other.Path());
  const auto q = ReadVolumeInfo(u'Q'), r = ReadVolumeInfo(u'r'), s = ReadVolumeInfo(u'S');
  ASSERT_TRUE(q && r && s);
  EXPECT_EQ(q->serial, r->serial);
  EXPECT_NE(q->serial, s->serial);
  EXPECT_EQ(q->label, u"");
  EXPECT_EQ(q->fileSystem, s->fileSystem);
}

TEST(Drives, ADriveWithoutItsFolderHasNoVolume) {
  const ScratchFolder folder;
  folder.MakeFile("file.txt");
  const MappedDrive first(u'Q', folder.PathOf(u"missing")), second(u'R', folder.PathOf(u"file.txt"));
  EXPECT_FALSE(ReadVolumeInfo(u'Q').has_value());
  EXPECT_FALSE(ReadVolumeInfo(u'R').has_value());
  EXPECT_FALSE(ReadVolumeInfo(u'!').has_value());
}

}  // namespace
}  // namespace quilmark
