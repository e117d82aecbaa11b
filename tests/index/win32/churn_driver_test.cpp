// Random changes of a volume that the system's own calls lead to.
#include <gtest/gtest.h>

#include <shared_mutex>
#include <unordered_set>

#include "driver/test_volume_server.h"
#include "index/build/ntfs_volume.h"
#include "index/follow/data_changes.h"
#include "index/follow/usn_monitor.h"
#include "support/churn_volume.h"

namespace quilmark {
namespace {

void ExpectEqualsModel(const VolumeIndex& volume, const ChurnVolume& churn) {
  const std::shared_lock lock(volume.indexLock);
  EXPECT_EQ(FindBrokenInvariant(volume), "");
  size_t alive = 0;
  for (uint32_t i = 0; i < volume.records.size(); ++i) {
    const FileRecord& record = volume.records[i];
    if (record.deleted) continue;
    ++alive;
    const auto* const file = churn.Find(record.frn);
    ASSERT_NE(file, nullptr) << "a ghost";
    ASSERT_EQ(NameOf(record), file->name);
    ASSERT_EQ(record.parentFrn, file->parentFrn);
  }
  ASSERT_EQ(alive, churn.AliveFrns().size());
}

TEST(ChurnOverTheDriver, TenThousandChangesLeaveTheIndexAsTheModel) {
  monitorPauses = {.afterReadMs = 0, .afterErrorMs = 0};
  ScriptedVolumes scripts;
  ChurnVolume churn(scripts.Script(u"N:"), 3);
  const auto answers = scripts.Open(u"N:");
  InstallVolumeOpener(nullptr);  // the program's own
  TestVolumeServer server(*answers);
  VolumeIndex volume;
  churn.Change(1'000);
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));

  for (int made = 1'000; made < 10'000 && !testing::Test::HasFailure(); made += 1'000) {
    churn.Change(1'000);
    churn.PassTurns(2 * static_cast<int>(kTurnsALook) + 1);
    ExpectEqualsModel(volume, churn);
  }

  churn.SetReleased(true);
  CloseVolume(volume);
  monitorPauses = {};
}

}  // namespace
}  // namespace quilmark
