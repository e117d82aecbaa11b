// The list of volumes by drive, letters of a mask, and messages: what the parts of a volume's life
// share.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "index/engine/search_engine.h"
#include "platform/drives.h"

namespace quilmark {

// The letters of a mask (bit 0: A), ascending; bits above 25 are left out.
std::u16string LettersOf(uint32_t mask);

// The volume's bit in such a mask; 0 for a volume without a drive.
uint32_t BitOfDrive(const VolumeIndex& volume);

// The volume of that drive ("X:", in either case), or null if there is none. volumesMutex held.
[[nodiscard]] VolumeIndex* FindVolumeLocked(const SearchEngine& engine, std::u16string_view drive);

// Puts the list into the order of its drives. volumesMutex held.
void SortByDrive(SearchEngine& engine);

// Puts the volume into the list, unless another job was first with its drive: then it is dropped. Takes
// volumesMutex.
void AddUnlessPresent(SearchEngine& engine, std::unique_ptr<VolumeIndex> volume);

// AddUnlessPresent, which also sets `ready` in the same hold of the lock: whoever holds it never sees a
// list with a volume and no `ready`, and a sync that finds nothing usable afterwards clears it.
void AddReady(SearchEngine& engine, std::unique_ptr<VolumeIndex> volume);

// Before a build: closes what is open of the volume, on a job. False where that takes longer than the
// engine's closeLimits, or where other jobs have yet to close it, as with a disk that does not answer:
// the volume is synced once it is closed.
[[nodiscard]] bool CloseForBuild(SearchEngine& engine, VolumeIndex& volume);

// What the drive says of itself, by the engine's reader; empty where it does not. Waits for the disk.
[[nodiscard]] std::optional<VolumeInfo> AskVolumeInfo(const SearchEngine& engine, char16_t letter);

// Posts the message, unless the program ends or `window` is null.
void PostUnlessEnding(PostTarget window, uint32_t message, uint64_t first, int64_t second);

// True for the one caller that may sync after an arrival: a drive with several notices is one arrival.
// `lastMs` is the tick of the last such sync, 0 for none yet.
[[nodiscard]] bool TakeArrivalTurn(std::atomic<uint64_t>& lastMs, uint64_t nowMs);

}  // namespace quilmark
