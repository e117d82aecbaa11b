#include "search/results/glance.h"

#include <gtest/gtest.h>

#include <future>

#include "support/gate.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

// Each look on a thread of its own, which has not waited in vain a moment ago.
bool IsHad(VolumeIndex& volume) {
  return std::async(std::launch::async, [&] { return LockForGlance(volume).owns_lock(); }).get();
}
bool AreAttrsHad(VolumeIndex& volume) {
  return std::async(std::launch::async, [&] { return LockAttrsForGlance(volume).owns_lock(); }).get();
}

TEST(Glance, TakesALockThatIsFreeOrShared) {
  const auto volume = MakeTestVolume(u"Q:");
  EXPECT_TRUE(IsHad(*volume));
  EXPECT_TRUE(AreAttrsHad(*volume));
  const Gate readers(volume->indexLock, Gate::Stops::kWriters);
  EXPECT_TRUE(IsHad(*volume));
}

TEST(Glance, IsNotHadWhereAWriterStays) {
  const auto volume = MakeTestVolume(u"Q:");
  const Gate writer(volume->indexLock, Gate::Stops::kAll);
  EXPECT_FALSE(IsHad(*volume));
  EXPECT_TRUE(AreAttrsHad(*volume)) << "another lock";
}

TEST(Glance, LeavesAVolumeAloneThatIsLostOrBuilt) {
  const auto volume = MakeTestVolume(u"Q:");
  EXPECT_TRUE(IsSearchable(*volume));
  volume->busy = true;
  EXPECT_FALSE(IsSearchable(*volume));
  EXPECT_FALSE(IsHad(*volume));
  volume->busy = false;
  volume->valid = false;
  EXPECT_FALSE(IsSearchable(*volume));
  EXPECT_FALSE(IsHad(*volume));
}

}  // namespace
}  // namespace quilmark
