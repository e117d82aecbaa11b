#include "platform/drives.h"

#include <gtest/gtest.h>

#include "platform/win32/wine_volumes.h"
#include "support/mapped_drive.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

constexpr uint32_t kBitOfC = 1u << 2;

TEST(Win32Drives, WithoutAMappingTheSystemsDrivesAreSeen) {
  EXPECT_NE(LogicalDriveMask() & kBitOfC, 0u);
  const std::optional<VolumeInfo> volume = ReadVolumeInfo(u'C');
  ASSERT_TRUE(volume.has_value());
  EXPECT_EQ(volume->fileSystem, IsWine() ? u"wine" : u"NTFS");
  EXPECT_EQ(volume->serial, ReadVolumeInfo(u'c')->serial);
}

TEST(Win32Drives, ALetterWithoutADriveHasNoVolume) {
  const uint32_t mask = LogicalDriveMask();
  for (char16_t letter = u'A'; letter <= u'Z'; ++letter) {
    const bool isDrive = (mask >> (letter - u'A')) & 1;
    EXPECT_TRUE(isDrive || !ReadVolumeInfo(letter).has_value()) << static_cast<char>(letter);
  }
}

TEST(Win32Drives, AMappedFolderIsNoVolumeWithAJournal) {
  const ScratchFolder folder;
  const MappedDrive drive(u'Q', folder.Path());
  EXPECT_EQ(ReadVolumeInfo(u'Q')->fileSystem, u"folder");
}

TEST(Win32Drives, APathIsBelowARootInAnyCase) {
  const MappedDrive drive(u'Q', u"R:\\Users\\J\u00F6rg");
  EXPECT_EQ(MappedPathOf(u"r:\\USERS\\J\u00D6RG\\Desktop"), u"Q:\\Desktop");
  EXPECT_EQ(MappedPathOf(u"R:\\Users\\J\u00F6rgen"), std::nullopt);
}

TEST(Win32Drives, ARootOfADriveMayBeMapped) {
  const MappedDrive drive(u'Q', u"R:\\");
  EXPECT_EQ(MappedPathOf(u"R:\\me\\Desktop"), u"Q:\\me\\Desktop");
  EXPECT_EQ(MappedPathOf(u"R:\\"), u"Q:\\");
}

}  // namespace
}  // namespace quilmark
