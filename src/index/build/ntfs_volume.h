// Index of an NTFS volume, from one stream of its records.
//
// The position in the change journal is taken first, the records are enumerated second, the journal is
// followed third: whatever changes meanwhile is replayed.
#pragma once

#include <cstdint>
#include <string_view>

#include "index/tables/volume_index.h"

namespace quilmark {

// Empties and refills the volume of `drive` ("X:") and starts its monitor; indexLock held exclusively
// throughout, `busy` set. False, and the volume not valid, if the device cannot be opened or has no
// journal and gets none; the tables are then as they were. std::bad_alloc, the volume not valid and its
// device closed, where memory runs out. Ends early at ShutdownRequested. A background thread's work.
[[nodiscard]] bool BuildNtfsVolume(VolumeIndex& volume, std::u16string_view drive);

// What came of a build: kNoJournal where the device opens and can have no journal, as on a medium that
// is read-only; kFailed where that is not known, as with a volume that is taken out meanwhile.
enum class NtfsBuild : uint8_t { kBuilt, kNoDevice, kNoJournal, kFailed };

// BuildNtfsVolume, which also says why it failed.
[[nodiscard]] NtfsBuild TryBuildNtfsVolume(VolumeIndex& volume, std::u16string_view drive);

// Stops the monitor and gives the device back, then waits 50 ms so that it is free for whoever opens it
// next. Nothing if no device is open. Any thread but the monitor's own.
void CloseVolume(VolumeIndex& volume);

// CloseVolume, unless a build has opened the volume since it was taken out.
void CloseTakenOut(VolumeIndex& volume);

// Waits between the three tries of a call to a journal that may fail for a passing cause.
struct JournalPauses {
  uint32_t beforeRetryMs = 250;
};
extern JournalPauses journalPauses;  // only tests change it, while nothing is built

// How a volume is opened. Null, with the reason in `error`, where that fails.
using VolumeOpener = std::unique_ptr<VolumeDevice> (*)(std::u16string_view drive, VolumeAccess access,
                                                       uint32_t& error);

// Has builds open volumes by `opener` from now on; null stands for OpenVolumeDevice, which the program
// uses. Process-wide, for tests and benchmarks, before they build. Any thread.
void InstallVolumeOpener(VolumeOpener opener);

}  // namespace quilmark
