// An NTFS volume built and followed, with each call to its device failing in turn.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <shared_mutex>

#include "index/build/ntfs_volume.h"
#include "index/engine/search_engine.h"
#include "index/follow/usn_monitor.h"
#include "platform/ntfs/raw_ntfs_device.h"
#include "platform/usn_record.h"
#include "support/failing_device.h"
#include "support/ntfs_builder.h"
#include "support/scripted_device.h"

namespace quilmark {
namespace {

constexpr uint64_t kRoot = MakeReference(5, 1);
constexpr uint32_t kErrors[] = {kErrorReadFault,          kErrorAccessDenied,     kErrorInvalidHandle,
                                kErrorDeviceNotConnected, kErrorJournalNotActive, kErrorHandleEof,
                                kErrorMoreData,           kErrorOperationAborted};
constexpr FaultKind kKinds[] = {FaultKind::kOnce, FaultKind::kEnd, FaultKind::kHalf};

using Names = std::vector<std::u16string>;

struct DeviceFailures : testing::TestWithParam<FaultKind> {
  DeviceFailures() {
    monitorPauses = {.afterReadMs = 1, .afterErrorMs = 1};
    journalPauses = {.beforeRetryMs = 0};
  }
  ~DeviceFailures() override {
    monitorPauses = {};
    journalPauses = {};
  }

  // CloseVolume without its pause.
  static void End(VolumeIndex& volume) {
    StopMonitor(volume);
    if (const auto device = volume.follower.LetGo()) device->Close();
  }

  static Names NamesOf(const VolumeIndex& volume) {
    Names names;
    const std::shared_lock lock(volume.indexLock);
    EXPECT_EQ(FindBrokenInvariant(volume), "");
    for (uint32_t i = 0; i < volume.records.size(); ++i) names.push_back(BuildPath(volume, i));
    std::sort(names.begin(), names.end());
    return names;
  }

  // What a build finds with no call failing.
  static Names Whole(const FailingVolumes::Opener& opener) {
    DeviceFaults faults(FaultKind::kOnce, 0, 0);
    const FailingVolumes installed(faults, opener);
    VolumeIndex volume;
    EXPECT_TRUE(BuildNtfsVolume(volume, u"N:"));
    End(volume);
    return NamesOf(volume);
  }

  // Builds the volume over devices of `opener` with each call failing with each error.
  static void BuildWithFailures(const FailingVolumes::Opener& opener) {
    const Names whole = Whole(opener);
    ASSERT_GE(whole.size(), 3u);
    for (const uint32_t error : kErrors) {
      bool hasFailed = true;
      for (int failing = 1; hasFailed; ++failing) {
        SCOPED_TRACE("error " + std::to_string(error) + ", call " + std::to_string(failing));
        DeviceFaults faults(GetParam(), error, failing);
        const FailingVolumes installed(faults, opener);
        VolumeIndex volume;
        const bool isBuilt = BuildNtfsVolume(volume, u"N:");
        EXPECT_TRUE(isBuilt ||
                    (faults.OpenDevices() == 0 && !volume.valid && !volume.follower.monitorRunning));
        End(volume);
        EXPECT_EQ(faults.OpenDevices(), 0);
        EXPECT_FALSE(volume.busy);
        hasFailed = faults.HasFailed();
        const Names names = NamesOf(volume);
        EXPECT_TRUE(std::includes(whole.begin(), whole.end(), names.begin(), names.end()));
        EXPECT_TRUE(hasFailed || names == whole);
      }
    }
  }
};
INSTANTIATE_TEST_SUITE_P(Each, DeviceFailures, testing::ValuesIn(kKinds));

TEST_P(DeviceFailures, ABuildFromAScriptLeavesAConsistentIndexAndNoDevice) {
  ScriptedVolumes scripts;
  int opened = 0;
  BuildWithFailures([&](std::u16string_view) {
    const std::u16string fresh = u"N" + std::u16string(1, static_cast<char16_t>(++opened));
    DeviceScript& script = scripts.Script(fresh);
    script.HoldJournalReads(true);  // the monitor asks once
    for (const int64_t position : {4'096, 8'192}) {
      script.Queue(kFsctlQueryUsnJournal, {.output = JournalData(77, position)});
    }
    script.Queue(kFsctlEnumUsnData, {.output = Bytes(8)});  // the probe
    script.Queue(kFsctlEnumUsnData,
                 {.output = UsnBlockBuilder(100)
                                .Record(kRoot, kRoot, u".", 0, kFileAttributeDirectory)
                                .Record(40, kRoot, u"Docs", 0, kFileAttributeDirectory)});
    script.Queue(kFsctlEnumUsnData, {.output = UsnBlockBuilder(200).Record(41, 40, u"a.txt")});
    return scripts.Open(fresh);
  });
}

TEST_P(DeviceFailures, ABuildFromTheBytesOfAVolumeLeavesAConsistentIndexAndNoDevice) {
  const MemoryVolume bytes = NtfsVolumeBuilder()
                                 .Folder(20, kRoot, u"Docs")
                                 .File(21, MakeReference(20, 1), u"a.txt")
                                 .File(22, MakeReference(20, 1), u"b.txt")
                                 .Journal(7, 0, Bytes(4'096))
                                 .Build();
  BuildWithFailures([&](std::u16string_view) { return OpenRawNtfs(bytes.Open()); });
}

// A volume N: with Docs (40), followed on this thread while three blocks bring x, y and z.
struct Followed {
  Followed(FaultKind kind, uint32_t error, int failing) : faults(kind, error, failing) {
    {
      const std::unique_lock lock(volume.indexLock);
      volume.drive = u"N:";
      volume.nextUsn = 1;
      const uint32_t docs =
          AppendRecord(volume, {.frn = 40, .parentFrn = kRoot, .isDirectory = true}, u"Docs");
      SetIndexOf(volume.frnToIndex, volume.records, 40, docs);
    }
    QueueBlocks();
    // A monitor that goes on trying would never end.
    faults.onFailure = [this] { wanted = ++failures < 5; };
    volume.follower.TakeDevice(faults.InFrontOf(scripts.Open(u"N:")), u"N:");
    RunUsnMonitor(volume, wanted);
    volume.follower.LetGo();
    const std::shared_lock lock(volume.indexLock);
    broken = FindBrokenInvariant(volume);
    for (uint32_t i = 1; i < volume.records.size(); ++i) names += BuildPath(volume, i) + u" ";
  }
  void QueueBlocks() {
    for (uint64_t i = 0; i < 3; ++i) {
      const std::u16string name(1, static_cast<char16_t>(u'x' + i));
      const bool isLast = i == 2;
      scripts.Script(u"N:").Queue(kFsctlReadUsnJournal,
                                  {.output = UsnBlockBuilder(static_cast<int64_t>(100 + i))
                                                 .Record(50 + i, 40, name, kUsnReasonFileCreate),
                                   .meanwhile = [this, isLast] { wanted = !isLast; }});
    }
  }

  ScriptedVolumes scripts;
  DeviceFaults faults;
  VolumeIndex volume;
  std::atomic<bool> wanted = true;
  int failures = 0;
  std::string broken;
  std::u16string names;
};

constexpr std::u16string_view kPrefixes[] = {u"", u"N:\\Docs\\x ", u"N:\\Docs\\x N:\\Docs\\y ",
                                             u"N:\\Docs\\x N:\\Docs\\y N:\\Docs\\z "};

TEST_P(DeviceFailures, AMonitorTriesAgainOrEndsAndKeepsWhatItRead) {
  for (const uint32_t error : kErrors) {
    for (int failing = 1; failing <= 4; ++failing) {  // the fourth call is the one to close
      SCOPED_TRACE("error " + std::to_string(error) + ", call " + std::to_string(failing));
      const Followed run(GetParam(), error, failing);
      EXPECT_EQ(run.broken, "");
      EXPECT_EQ(run.faults.OpenDevices(), 0);
      const bool endsQuietly = error == kErrorOperationAborted || error == kErrorJournalNotActive;
      const bool isLost = error == kErrorAccessDenied || error == kErrorInvalidHandle ||
                          error == kErrorDeviceNotConnected;
      // Half an answer is none; the call behind it fails, but the last one has none behind it.
      const int lastFailing = GetParam() == FaultKind::kHalf ? 2 : 3;
      EXPECT_EQ(run.volume.valid, !(isLost && failing <= lastFailing));
      const bool readsOn = GetParam() == FaultKind::kOnce && !endsQuietly && !isLost;
      const size_t read = readsOn ? 3 : static_cast<size_t>(failing) - 1;
      EXPECT_EQ(run.names, kPrefixes[std::min<size_t>(read, 3)]);
    }
  }
}

}  // namespace
}  // namespace quilmark
