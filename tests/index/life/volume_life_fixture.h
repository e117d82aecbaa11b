// Drives of one test, and the engine that indexes them.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "index/build/ntfs_volume.h"
#include "index/follow/usn_monitor.h"
#include "index/life/volume_life.h"
#include "platform/background.h"
#include "platform/clock.h"
#include "platform/debug_output.h"
#include "platform/drives.h"
#include "support/environment.h"
#include "support/ntfs_builder.h"
#include "support/scratch_folder.h"
#include "support/scripted_device.h"

namespace quilmark {

inline std::string debugOutput;  // what the debugger was told in this test

// Drives of one test: E: and F: are folders, N: is an NTFS image whose device is a script. B: is a drive
// without a medium: while it is mapped no test sees the machine's own drives.
struct VolumeLife : testing::Test {
  ScratchFolder folder;
  ScratchFolder config;
  ScopedEnvironment configVariable{"QUILMARK_CONFIG_DIR", config.HostPath().string()};
  ScriptedVolumes scripts;
  PostQueue window;
  SearchEngine engine;

  VolumeLife() {
    monitorPauses = {.afterReadMs = 1, .afterErrorMs = 1};
    journalPauses = {.beforeRetryMs = 0};
    engine.closeLimits.mostMs = 60'000;  // so that a busy machine's close is waited for
    MapDrive(u'B', folder.PathOf(u"no medium"));
    folder.MakeFile("e/one.txt");
    folder.MakeFile("f/two.txt");
    folder.MakeFile("n.img", NtfsVolumeBuilder().Image());
    debugOutput.clear();
    SetDebugOutputListener([](std::string_view text) { debugOutput += text; });
  }
  ~VolumeLife() override {
    EXPECT_TRUE(WaitForBackgroundJobs(60'000));
    SetDebugOutputListener(nullptr);
    for (VolumeIndex* const volume : CopyVolumes(engine)) CloseVolume(*volume);
    for (char16_t letter = u'A'; letter <= u'Z'; ++letter) UnmapDrive(letter);
    ShutdownRequested = false;
    monitorPauses = {};
    journalPauses = {};
  }

  void MapE() { MapDrive(u'E', folder.PathOf(u"e")); }
  void MapF() { MapDrive(u'F', folder.PathOf(u"f")); }
  void MapN() { MapDrive(u'N', folder.PathOf(u"n.img")); }
  void QueueNtfsBuild() {
    DeviceScript& script = scripts.Script(u"N:");
    script.Queue(kFsctlQueryUsnJournal, {.output = JournalData(77, 4096)});
    script.Queue(kFsctlEnumUsnData, {.output = Bytes(8)});
    script.Queue(kFsctlEnumUsnData, {.output = UsnBlockBuilder(1).Record(41, 5, u"a.txt")});
  }
  void Finish() { ASSERT_TRUE(WaitForBackgroundJobs(60'000)); }
  void Start() {
    InitBackground(engine, window.Target());
    Finish();
  }
  void Sync() {
    SyncCurrentVolumesAsync(engine, window.Target());
    Finish();
  }
  // Waits for what another thread brings about; false after a minute.
  template <typename Condition>
  bool WaitFor(Condition condition) {
    const uint64_t start = TickMs();
    while (!condition() && TickMs() - start < 60'000) std::this_thread::yield();
    return condition();
  }
  // What was posted, as (message, first, second).
  std::vector<std::tuple<uint32_t, uint64_t, int64_t>> Posted() {
    std::vector<std::tuple<uint32_t, uint64_t, int64_t>> all;
    while (const auto message = window.Take(0)) {
      all.emplace_back(message->message, message->first, message->second);
    }
    return all;
  }
  std::vector<std::u16string> Drives() {
    std::vector<std::u16string> drives;
    for (VolumeIndex* volume : CopyVolumes(engine)) drives.push_back(volume->drive);
    return drives;
  }
  VolumeIndex& Volume(size_t position) { return *CopyVolumes(engine)[position]; }
};

}  // namespace quilmark
