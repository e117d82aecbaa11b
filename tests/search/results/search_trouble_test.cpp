// A search while its volume is built anew, and one that runs out of memory in the middle of a scan.
#include <gmock/gmock.h>

#include <atomic>
#include <mutex>
#include <new>
#include <thread>

#include "index/build/ntfs_volume.h"
#include "platform/background.h"
#include "search/results/search_pipeline.h"
#include "search/scan/name_scan.h"
#include "support/scripted_device.h"
#include "support/search_harness.h"
#include "support/volumes.h"

namespace {

std::atomic<size_t> mostBytes = SIZE_MAX;  // what takes more fails

}  // namespace

// The linker leads `operator new` of this program here (cmake/tests.cmake).
#ifdef _WIN32
#define WRAPPED_NEW __wrap__Znwy
#define REAL_NEW __real__Znwy
#else
#define WRAPPED_NEW __wrap__Znwm
#define REAL_NEW __real__Znwm
#endif
extern "C" void* REAL_NEW(size_t bytes);
extern "C" void* WRAPPED_NEW(size_t bytes) {
  if (bytes > mostBytes) throw std::bad_alloc();
  return REAL_NEW(bytes);
}

namespace quilmark {
namespace {

using testing::ElementsAre;
using Paths = std::vector<std::u16string>;

struct SearchTrouble : testing::Test {
  VolumeIndex& AddVolumeWith(std::u16string_view drive, int count, std::u16string_view name) {
    auto volume = MakeTestVolume(drive);
    for (int i = 0; i < count; ++i) AddFile(*volume, name);
    return *AddVolume(Engine(), std::move(volume));
  }
  void Search(std::u16string text) {
    DoSearchAsync(std::move(text), false, false);
    harness.KindsUntilFinal();
  }
  Paths Find(std::u16string text) {
    Search(std::move(text));
    return harness.ShownPaths();
  }
  SearchHarness harness;
};

TEST_F(SearchTrouble, VolumeThatIsBuiltAnewIsLeftOutUntilItIsThere) {
  ScriptedVolumes scripts;
  DeviceScript& script = scripts.Script(u"N:");
  const auto queueBuild = [&](std::u16string_view name, std::function<void()> meanwhile) {
    script.Queue(kFsctlQueryUsnJournal, {.output = JournalData(77, 64)});
    script.Queue(kFsctlEnumUsnData, {.output = Bytes(8)});  // the probe
    script.Queue(kFsctlEnumUsnData, {.output = UsnBlockBuilder(101).Record(100, 5, name)});
    script.Queue(kFsctlEnumUsnData,
                 {.error = kErrorHandleEof, .output = {}, .meanwhile = std::move(meanwhile)});
  };
  AddVolumeWith(u"C:", 1, u"here");
  auto made = std::make_unique<VolumeIndex>();
  made->drive = u"N:";
  VolumeIndex& volume = *AddVolume(Engine(), std::move(made));

  queueBuild(u"here too", nullptr);
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  const Paths before = Find(u"here");
  std::shared_ptr<const ResultSet> during;
  queueBuild(u"here again", [&] {
    while (volume.recordsRead == 0) std::this_thread::yield();  // the index holds it by now
    Search(u"here");
    during = HeldResults();
  });
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));

  EXPECT_THAT(before, ElementsAre(u"C:\\here", u"N:\\here too"));
  ASSERT_NE(during, nullptr);
  ASSERT_EQ(during->size(), 1u);
  EXPECT_EQ(during->front().volume->drive, u"C:");
  EXPECT_THAT(Find(u"here"), ElementsAre(u"C:\\here", u"N:\\here again"));
  CloseVolume(volume);
}

TEST_F(SearchTrouble, ScanThatRunsOutOfMemoryEndsAloneAndFreesItsVolume) {
  constexpr int kFiles = 150'000;
  VolumeIndex& volume = AddVolumeWith(u"C:", kFiles, u"report");
  AddFile(volume, u"other");
  Find(u"other");
  std::string logged;
  SetBackgroundExceptionLog([&](const char* what) { logged = what; });

  mostBytes = kResultRoom * sizeof(MatchItem);  // the set cannot grow beyond its first room
  DoSearchAsync(u"report", false, false);
  const bool isEnded = WaitForBackgroundJobs(60'000);
  mostBytes = SIZE_MAX;
  SetBackgroundExceptionLog(nullptr);

  ASSERT_TRUE(isEnded);
  EXPECT_THAT(logged, testing::HasSubstr("do_search: "));
  EXPECT_EQ(harness.Next().first, SearchNumber());  // the first page, and no final set behind it
  EXPECT_TRUE(harness.IsQuiet());
  EXPECT_EQ(HeldResults()->size() / kGranule, kPartialResults / kGranule);
  EXPECT_TRUE(std::unique_lock(volume.indexLock, std::try_to_lock).owns_lock());
  Search(u"report");
  EXPECT_EQ(HeldResults()->size(), static_cast<size_t>(kFiles));
}

}  // namespace
}  // namespace quilmark
