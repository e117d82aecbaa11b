#include "index/build/ntfs_volume.h"

#include <atomic>
#include <exception>
#include <thread>

#include "config/log.h"
#include "index/build/enum_queue.h"
#include "index/build/volume_build.h"
#include "index/follow/data_changes.h"
#include "index/follow/usn_monitor.h"
#include "platform/bytes.h"
#include "platform/clock.h"
#include "platform/drives.h"
#include "platform/format.h"
#include "platform/shutdown.h"
#include "platform/usn_record.h"

namespace quilmark {

JournalPauses journalPauses;

namespace {

constexpr uint64_t kJournalMaximumBytes = 0x1000'0000;  // 256 MiB
constexpr uint64_t kJournalStepBytes = 0x100'0000;      // 16 MiB
constexpr int64_t kUnbounded = 0x7FFF'FFFF'FFFF'FFFF;
constexpr int kMostTries = 3;  // of the probe, and of a query

// USN_JOURNAL_DATA of 56 bytes (winioctl.h).
constexpr size_t kJournalDataBytes = 56, kUsnJournalId = 0, kNextUsn = 16;

// The first form of MFT_ENUM_DATA.
struct MftEnumData {
  uint64_t startFileReferenceNumber = 0;
  int64_t lowUsn = 0;
  int64_t highUsn = 0;
};
static_assert(sizeof(MftEnumData) == 24);

struct CreateUsnJournalData {
  uint64_t maximumSize = kJournalMaximumBytes;
  uint64_t allocationDelta = kJournalStepBytes;
};

struct DeleteUsnJournalData {
  uint64_t usnJournalId = 0;
  uint32_t deleteFlags = 1;  // USN_DELETE_FLAG_DELETE
  uint32_t padding = 0;
};

std::atomic<VolumeOpener> volumeOpener = OpenVolumeDevice;

template <typename Input>
std::span<const std::byte> InputBytes(const Input& input) {
  return std::as_bytes(std::span(&input, 1));
}

std::shared_ptr<VolumeDevice> OpenForRecords(std::u16string_view drive) {
  uint32_t error = 0;
  const VolumeOpener open = volumeOpener;
  auto device = open(drive, VolumeAccess::kReadWrite, error);
  if (device == nullptr) device = open(drive, VolumeAccess::kRead, error);
  return device;
}

// A cause that passes, as another program at the journal, is waited for before a failure counts.
template <typename Ask, typename IsAnswer>
uint32_t AskPatiently(Ask ask, IsAnswer isAnswer) {
  uint32_t error = ask();
  for (int tries = 1; tries < kMostTries && !isAnswer(error) && !ShutdownRequested; ++tries) {
    SleepMs(journalPauses.beforeRetryMs);
    error = ask();
  }
  return error;
}

// Takes the journal's identity and its position. The error where there is none.
uint32_t QueryJournal(VolumeIndex& volume, VolumeDevice& device) {
  ControlBuffer<kJournalDataBytes> data{};
  const auto query = [&] {
    const auto reply = device.Control(kFsctlQueryUsnJournal, {}, data.bytes);
    return reply.error == 0 && reply.bytes < kJournalDataBytes ? kErrorMoreData : reply.error;
  };
  const uint32_t error = AskPatiently(
      query, [](uint32_t answer) { return answer == 0 || answer == kErrorJournalNotActive; });
  if (error != 0) return error;
  volume.journalId = LoadLe<uint64_t>(data.bytes, kUsnJournalId);
  volume.nextUsn = LoadLe<int64_t>(data.bytes, kNextUsn);
  return 0;
}

void CreateJournal(VolumeDevice& device) {
  device.Control(kFsctlCreateUsnJournal, InputBytes(CreateUsnJournalData{}), {});
}

uint32_t FindOrCreateJournal(VolumeIndex& volume, VolumeDevice& device) {
  if (QueryJournal(volume, device) == 0) return 0;
  CreateJournal(device);
  return QueryJournal(volume, device);
}

bool IsProbeAnswer(uint32_t error) {
  return error == 0 || error == kErrorHandleEof || error == kErrorMoreData;
}

// What the enumeration answers: one of IsProbeAnswer, or why it does not work.
uint32_t ProbeEnumeration(VolumeDevice& device, const MftEnumData& range) {
  ControlBuffer<520> scratch;
  return AskPatiently(
      [&] { return device.Control(kFsctlEnumUsnData, InputBytes(range), scratch.bytes).error; },
      IsProbeAnswer);
}

// A journal that exists and cannot be used gives way to a new one. Others use it too: the log tells why.
uint32_t ReplaceJournal(VolumeIndex& volume, VolumeDevice& device, uint32_t probeError) {
  const uint64_t formerId = volume.journalId;
  const DeleteUsnJournalData former{.usnJournalId = formerId};
  device.Control(kFsctlDeleteUsnJournal, InputBytes(former), {});
  CreateJournal(device);
  const uint32_t error = QueryJournal(volume, device);
  LogPerfMetric(FormatText(u"journal replaced drive=%s probe_error=%lu former_id=%llu id=%llu",
                           volume.drive, probeError, formerId,
                           error == 0 ? volume.journalId.load() : 0));
  return error;
}

void AppendRecords(VolumeIndex& volume, std::span<const std::byte> block, std::u16string& name) {
  UsnCursor cursor{.block = block};
  while (!ShutdownRequested) {
    const auto record = NextUsnRecord(cursor);
    if (!record) return;
    AppendRecord(volume,
                 {.frn = record->frn.value,
                  .parentFrn = record->parentFrn.value,
                  .isDirectory = (record->attributes & kFileAttributeDirectory) != 0},
                 NameUnits(*record, name));
  }
}

void ParseBlocks(VolumeIndex& volume, EnumQueue& queue) {
  std::u16string name;
  while (!ShutdownRequested) {
    const auto buffer = queue.Pop();
    if (buffer == nullptr) return;
    AppendRecords(volume, buffer->Block(), name);
    volume.recordsRead = volume.records.size();
  }
}

void ReadBlocks(VolumeDevice& device, MftEnumData range, EnumQueue& queue) {
  while (!ShutdownRequested && !queue.IsAbandoned()) {
    auto buffer = std::make_unique_for_overwrite<EnumBuffer>();
    const auto reply = device.Control(kFsctlEnumUsnData, InputBytes(range), buffer->bytes);
    if (reply.error != 0 || reply.bytes < kUsnPositionBytes) return;
    buffer->bytesReturned = static_cast<uint32_t>(reply.bytes);
    range.startFileReferenceNumber = LoadLe<uint64_t>(buffer->bytes, 0);
    if (reply.bytes > kUsnPositionBytes) queue.Push(std::move(buffer));
  }
}

// One pass: this thread reads, another parses, and what fails on either side ends both and leaves here.
// indexLock is held over both.
void Enumerate(VolumeIndex& volume, VolumeDevice& device, const MftEnumData& range) {
  EnumQueue queue;
  std::exception_ptr parserFailure, readerFailure;
  std::thread parser([&] {
    try {
      ParseBlocks(volume, queue);
    } catch (...) {
      parserFailure = std::current_exception();
      queue.Abandon();
    }
  });
  try {
    ReadBlocks(device, range, queue);
  } catch (...) {
    readerFailure = std::current_exception();
  }
  queue.Finish();
  parser.join();
  if (readerFailure != nullptr) std::rethrow_exception(readerFailure);
  if (parserFailure != nullptr) std::rethrow_exception(parserFailure);
}

void FillTables(VolumeIndex& volume, VolumeDevice& device) {
  ResetVolumeTables(volume);
  MftEnumData range{.highUsn = volume.nextUsn};
  Enumerate(volume, device, range);
  if (!volume.records.empty() || range.highUsn == kUnbounded || ShutdownRequested) return;
  // Some volumes deliver nothing under a bounded range.
  range.highUsn = kUnbounded;
  Enumerate(volume, device, range);
}

// From here on the follower tells of the device.
void HoldDevice(VolumeIndex& volume, std::shared_ptr<VolumeDevice> device) {
  auto notice = device->TellWindow(volume.listeners.window);
  volume.follower.TakeDevice(std::move(device), volume.drive, std::move(notice));
}

// What a journal that cannot be had means. A volume that is being taken out, or a disk that fails, may
// still have one.
NtfsBuild WithoutJournal(const VolumeIndex& volume, uint32_t error) {
  constexpr uint32_t kErrorNotSupported = 50;
  const bool saysSo = error == kErrorJournalNotActive || error == kErrorInvalidFunction ||
                      error == kErrorWriteProtect || error == kErrorNotSupported;
  return saysSo && !volume.follower.takenOut && !ShutdownRequested ? NtfsBuild::kNoJournal
                                                                   : NtfsBuild::kFailed;
}

NtfsBuild FillFromDevice(VolumeIndex& volume, const std::shared_ptr<VolumeDevice>& device) {
  if (const uint32_t error = FindOrCreateJournal(volume, *device); error != 0) {
    return WithoutJournal(volume, error);
  }
  const uint32_t probe = ProbeEnumeration(*device, {.highUsn = volume.nextUsn});
  if (!IsProbeAnswer(probe)) {
    const uint32_t error = ReplaceJournal(volume, *device, probe);
    if (error != 0) return WithoutJournal(volume, error);
  }
  FillTables(volume, *device);
  volume.valid = true;  // from here on the monitor may clear it
  // The device was closed under the enumeration.
  if (volume.follower.takenOut) return NtfsBuild::kFailed;
  if (ShutdownRequested) return NtfsBuild::kBuilt;
  FillFrnTable(volume.frnToIndex, volume.records);
  BeginDataWatch(volume, volume.nextUsn);
  StartMonitor(volume);
  return NtfsBuild::kBuilt;
}

void GiveBack(VolumeIndex& volume, VolumeDevice& device) {
  volume.follower.LetGo();
  device.Close();
}

// With indexLock held.
NtfsBuild BuildLocked(VolumeIndex& volume) {
  const std::shared_ptr<VolumeDevice> device = OpenForRecords(volume.drive);
  if (device == nullptr) return NtfsBuild::kNoDevice;
  HoldDevice(volume, device);
  NtfsBuild build = NtfsBuild::kFailed;
  try {
    build = FillFromDevice(volume, device);
  } catch (...) {
    GiveBack(volume, *device);
    throw;
  }
  if (build != NtfsBuild::kBuilt) GiveBack(volume, *device);
  return build;
}

}  // namespace

void InstallVolumeOpener(VolumeOpener opener) {
  volumeOpener = opener != nullptr ? opener : OpenVolumeDevice;
}

bool BuildNtfsVolume(VolumeIndex& volume, std::u16string_view drive) {
  return TryBuildNtfsVolume(volume, drive) == NtfsBuild::kBuilt;
}

NtfsBuild TryBuildNtfsVolume(VolumeIndex& volume, std::u16string_view drive) {
  VolumeBuild turn(volume, drive, kNtfs);
  const NtfsBuild build = BuildLocked(volume);
  if (build == NtfsBuild::kBuilt) turn.Succeed();
  return build;
}

void CloseVolume(VolumeIndex& volume) { volume.follower.Close(); }

void CloseTakenOut(VolumeIndex& volume) { volume.follower.CloseTakenOut(); }

}  // namespace quilmark
