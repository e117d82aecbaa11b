// Folders and images of a command line, with each call to the system failing in turn.
#include <gtest/gtest.h>

#include <vector>

#include "cli/drive_plan.h"
#include "index/engine/search_engine.h"
#include "index/life/volume_life.h"
#include "platform/drives.h"
#include "support/ntfs_builder.h"
#include "support/scratch_folder.h"
#include "support/system_faults.h"

namespace quilmark {
namespace {

struct CommandLineFailures : testing::TestWithParam<FaultKind> {
  CommandLineFailures() {
    folder.MakeFile("sub/a.txt");
    folder.MakeFile("disk.img", NtfsVolumeBuilder().File(20, MakeReference(5, 1), u"b.txt").Image());
  }
  std::vector<PlannedDrive> Planned(const char* name) {
    return {{.letter = u'Q', .typed = Utf8(folder.HostPath() / name)}};
  }

  ScratchFolder folder;
};
INSTANTIATE_TEST_SUITE_P(Each, CommandLineFailures, testing::ValuesIn(kAllFaultKinds));

TEST_P(CommandLineFailures, AFolderOrAnImageIsTakenOrRefusedWithAReason) {
  for (const char* const name : {"sub", "disk.img"}) {
    FailEachCall(GetParam(), [&](const auto& failing) {
      std::string error;
      const bool hasFailed = failing([&] { error = MapPlannedDrives(Planned(name)); });
      EXPECT_EQ(MappedRoot(u'Q').has_value(), error.empty());
      EXPECT_TRUE(hasFailed || error.empty()) << error;
      UnmapDrive(u'Q');
    });
  }
}

TEST_P(CommandLineFailures, AFolderIsIndexedOrSaidToHaveNothing) {
  FailEachCall(GetParam(), [&](const auto& failing) {
    const auto drives = Planned("sub");
    ASSERT_EQ(MapPlannedDrives(drives), "");
    IndexOutcome outcome;
    const bool hasFailed = failing([&] { outcome = IndexDrives(drives, false, nullptr); });
    EXPECT_EQ(CopyVolumes(Engine()).size(), outcome.error.empty() ? 1u : 0u);
    EXPECT_TRUE(hasFailed || outcome.error.empty()) << outcome.error;
    DropAllVolumes(Engine());
    Engine().dropped.clear();
    Engine().ready = false;
    UnmapDrive(u'Q');
  });
}

}  // namespace
}  // namespace quilmark
