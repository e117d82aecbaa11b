// What a run knows of a volume's files is there again in the next.
#include <gtest/gtest.h>

#include "window/known_volume.h"

namespace quilmark {
namespace {

class WarmRestart : public KnownVolume {
 protected:
  void ExpectTheSizeAndEnd() {
    program.SearchFor(u"warm");
    EXPECT_EQ(program.Ask(Probe::kRows), 1);
    EXPECT_EQ(PathOf(0), PathOnDrive(u"warm.txt"));
    EXPECT_EQ(program.Ask(Probe::kFirstRowSize), 123'456);
    program.Ask(Probe::kRepaint, 1);
    program.Screenshot("warm-restart");
    program.Exit();
    EXPECT_EQ(program.WaitForEnd(), 0u);
  }
};

TEST_F(WarmRestart, BringsBackWhatTheLastRunKnew) {
  const AttrEntry entry = Known(123'456, 133'444'736'000'000'000, 133'000'000'000'000'000);
  const uint64_t file = AddFile(u"warm.txt"), gone = MakeReference(999, 1);
  StartWith({{file, entry}, {gone, entry}});
  ExpectTheSizeAndEnd();
  EXPECT_EQ(CacheFile(), CacheOf({{file, entry}})) << "written at the end, without what is gone";
  program.StartAndWait();
  ExpectTheSizeAndEnd();
  EXPECT_EQ(CacheFile(), CacheOf({{file, entry}}));
}

}  // namespace
}  // namespace quilmark
