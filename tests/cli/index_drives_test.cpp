#include <gtest/gtest.h>

#include <filesystem>
#include <string_view>
#include <vector>

#include "cli/drive_plan.h"
#include "index/engine/search_engine.h"
#include "index/life/volume_life.h"
#include "platform/drives.h"
#include "support/ntfs_builder.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

class IndexedDrives : public testing::Test {
 protected:
  ~IndexedDrives() override {
    DropAllVolumes(Engine());
    Engine().dropped.clear();
    Engine().ready = false;
    for (const char16_t letter : {u'Q', u'R'}) UnmapDrive(letter);
  }
  IndexOutcome Index(const std::vector<PlannedDrive>& drives) {
    EXPECT_EQ(MapPlannedDrives(drives), "");
    return IndexDrives(drives, false);
  }
  PlannedDrive Drive(char16_t letter, const char* name) const {
    return {.letter = letter, .typed = Utf8(folder.HostPath() / name)};
  }
  static bool HasName(size_t volumeNumber, std::u16string_view name) {
    const VolumeIndex& volume = *CopyVolumes(Engine()).at(volumeNumber);
    for (uint32_t i = 0; i < volume.records.size(); ++i) {
      if (NameOf(volume.records[i]) == name) return true;
    }
    return false;
  }

  ScratchFolder folder;
};

TEST_F(IndexedDrives, AreFoldersAndImagesAtOnce) {
  folder.MakeFile("sub/a.txt");
  folder.MakeFile("disk.img", NtfsVolumeBuilder().File(20, MakeReference(5, 1), u"b.txt").Image());
  const IndexOutcome outcome = Index({Drive(u'Q', "sub"), Drive(u'R', "disk.img")});
  EXPECT_EQ(outcome.error, "");
  EXPECT_GE(outcome.milliseconds, 0);
  ASSERT_EQ(CopyVolumes(Engine()).size(), 2u);
  EXPECT_TRUE(HasName(0, u"a.txt"));
  EXPECT_TRUE(HasName(1, u"b.txt"));
  EXPECT_FALSE(HasName(0, u"b.txt"));
}

TEST_F(IndexedDrives, AFolderThatBecameEmptyIsAnError) {
  folder.MakeFile("sub/a.txt");
  const std::vector<PlannedDrive> drives = {Drive(u'Q', "sub")};
  ASSERT_EQ(MapPlannedDrives(drives), "");
  std::filesystem::remove(folder.HostPath() / "sub" / "a.txt");
  EXPECT_NE(IndexDrives(drives, false).error.find("has no entries"), std::string::npos);
  EXPECT_TRUE(CopyVolumes(Engine()).empty());
}

}  // namespace
}  // namespace quilmark
