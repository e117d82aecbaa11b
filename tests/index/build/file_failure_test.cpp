// Volumes read from folders and from image files, with each call to the system failing in turn.
#include <gtest/gtest.h>

#include <algorithm>
#include <shared_mutex>
#include <string>
#include <vector>

#include "index/build/directory_walk.h"
#include "index/build/ntfs_volume.h"
#include "index/follow/usn_monitor.h"
#include "index/tables/volume_index.h"
#include "support/mapped_drive.h"
#include "support/ntfs_builder.h"
#include "support/scratch_folder.h"
#include "support/system_faults.h"

namespace quilmark {
namespace {

using Names = std::vector<std::u16string>;

Names NamesOf(const VolumeIndex& volume) {
  Names names;
  const std::shared_lock lock(volume.indexLock);
  EXPECT_EQ(FindBrokenInvariant(volume), "");
  for (uint32_t i = 0; i < volume.records.size(); ++i) names.push_back(BuildPath(volume, i));
  std::sort(names.begin(), names.end());
  return names;
}

// CloseVolume without its pause.
void End(VolumeIndex& volume) {
  StopMonitor(volume);
  if (const auto device = volume.follower.LetGo()) device->Close();
}

bool Includes(const Names& whole, const Names& names) {
  return std::includes(whole.begin(), whole.end(), names.begin(), names.end());
}

struct VolumeFileFailures : testing::TestWithParam<FaultKind> {
  VolumeFileFailures() { monitorPauses = {.afterReadMs = 60'000, .afterErrorMs = 60'000}; }
  ~VolumeFileFailures() override { monitorPauses = {}; }

  ScratchFolder folder;
};
INSTANTIATE_TEST_SUITE_P(Each, VolumeFileFailures, testing::ValuesIn(kAllFaultKinds));

TEST_P(VolumeFileFailures, AWalkKeepsWhatItCouldRead) {
  folder.MakeFile("a/one");
  folder.MakeFile("a/deep/two");
  folder.MakeFile("b/three");
  folder.MakeFile("four");
  const MappedDrive drive(u'Q', folder.Path());
  VolumeIndex volume;
  ASSERT_TRUE(BuildWalkVolume(volume, u"Q:", u"ext4"));
  const Names whole = NamesOf(volume);
  ASSERT_EQ(whole.size(), 7u);
  FailEachCall(GetParam(), [&](const auto& failing) {
    bool isBuilt = false;
    const bool hasFailed = failing([&] { isBuilt = BuildWalkVolume(volume, u"Q:", u"ext4"); });
    EXPECT_EQ(volume.valid, isBuilt);
    EXPECT_FALSE(volume.busy);
    const Names names = NamesOf(volume);
    EXPECT_EQ(isBuilt, !names.empty());
    EXPECT_TRUE(hasFailed ? Includes(whole, names) : names == whole);
  });
}

TEST_P(VolumeFileFailures, AnImageGivesTheFilesThatCouldBeReadAndIsClosed) {
  constexpr uint64_t kRoot = MakeReference(5, 1);
  std::string image = NtfsVolumeBuilder()
                          .Folder(20, kRoot, u"Docs")
                          .File(21, MakeReference(20, 1), u"a.txt")
                          .File(22, MakeReference(20, 1), u"b.txt")
                          .Journal(7, 0, Bytes(4'096))
                          .Image();
  image.resize(1'010 * kBuiltClusterBytes);  // nothing stands behind the journal
  folder.MakeFile("disk.img", image);
  const MappedDrive drive(u'N', folder.PathOf(u"disk.img"));
  Names whole;
  {
    VolumeIndex volume;
    ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
    End(volume);
    whole = NamesOf(volume);
  }
  ASSERT_GE(whole.size(), 3u);
  FailEachCall(GetParam(), [&](const auto& failing) {
    VolumeIndex volume;
    bool isBuilt = false;
    const bool hasFailed = failing([&] {
      isBuilt = BuildNtfsVolume(volume, u"N:");
      End(volume);
    });
    EXPECT_TRUE(isBuilt || !volume.valid);
    EXPECT_FALSE(volume.busy);
    const Names names = NamesOf(volume);
    EXPECT_TRUE(hasFailed ? Includes(whole, names) : names == whole);
  });
}

}  // namespace
}  // namespace quilmark
