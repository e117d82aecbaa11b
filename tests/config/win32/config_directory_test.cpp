#include "config/config_directory.h"

#include <gtest/gtest.h>

#include "config/log.h"
#include "config/window_settings.h"
#include "platform/files.h"
#include "support/documents_at.h"
#include "support/environment.h"
#include "support/listing.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

class Documents : public testing::Test {
 protected:
  const ScopedEnvironment none{"QUILMARK_CONFIG_DIR", std::nullopt};
  const ScratchFolder scratch;
};

TEST_F(Documents, HoldTheDirectoryWhereTheSystemSaysThatTheyAre) {
  scratch.MakeFolder("papers");
  const DocumentsAt documents(scratch.PathOf(u"papers"));
  EXPECT_EQ(GetConfigDirectory(), scratch.PathOf(u"papers\\Quilmark\\config"));
  EXPECT_TRUE(IsExistingFolder(scratch.PathOf(u"papers\\Quilmark\\config")));
}

TEST_F(Documents, ThatAreMissingAreKeptAndSavesFailInSilence) {
  const std::u16string missing = scratch.PathOf(u"moved away");
  const DocumentsAt documents(missing);
  EXPECT_EQ(GetConfigDirectory(), missing + u"\\Quilmark\\config");
  LogPerfMetric(u"line");
  SaveWindowSettings(WindowPlacement{});
  EXPECT_EQ(EntriesIn(scratch.Path()), EntrySet{});
}

TEST_F(Documents, ThatMoveAwayAreFollowed) {
  scratch.MakeFolder("before");
  scratch.MakeFolder("after");
  DocumentsAt documents(scratch.PathOf(u"before"));
  LogPerfMetric(u"line");
  ASSERT_TRUE(IsExistingPath(scratch.PathOf(u"before\\Quilmark\\config\\perf_metrics.log")));
  std::filesystem::rename(scratch.HostPath() / "before" / "Quilmark",
                          scratch.HostPath() / "after" / "Quilmark");
  documents.Move(scratch.PathOf(u"after"));
  LogPerfMetric(u"line");
  EXPECT_EQ(EntriesIn(scratch.PathOf(u"before")), EntrySet{});
  EXPECT_EQ(GetConfigDirectory(), scratch.PathOf(u"after\\Quilmark\\config"));
}

}  // namespace
}  // namespace quilmark
