// What the parts of a volume's life share: the list of volumes by drive, letters of a mask, messages.
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

// The letters of a mask (bit 0: A), ascending.
std::u16string LettersOf(uint32_t mask);

// The volume's bit in such a mask; 0 for a volume without a drive.
uint32_t BitOfDrive(const VolumeIndex& volume);

// Both: volumesMutex held. Null if no volume has that drive; letters are compared without regard to
// case.
VolumeIndex* FindVolumeLocked(const SearchEngine& engine, std::u16string_view drive);
void SortByDrive(SearchEngine& engine);

// Puts the volume into the list, unless another job was first with its drive: then it is dropped. Takes
// volumesMutex.
void AddUnlessPresent(SearchEngine& engine, std::unique_ptr<VolumeIndex> volume);

// The same, and sets `ready` in the same hold of the lock: whoever has it sees no list with a volume and
// no `ready`, and a sync that finds nothing usable afterwards has the last word.
void AddReady(SearchEngine& engine, std::unique_ptr<VolumeIndex> volume);

// Before a build: closes what is open of the volume, on a job. False where that takes longer than
// closeLimits, or others have yet to be done with it, as with a disk that does not answer: the volume is
// synced once it is closed.
bool CloseForBuild(SearchEngine& engine, VolumeIndex& volume);

// What the drive says of itself, by the engine's reader.
[[nodiscard]] std::optional<VolumeInfo> AskVolumeInfo(const SearchEngine& engine, char16_t letter);

// Posts, but for the end of the program.
void PostUnlessEnding(PostTarget window, uint32_t message, uint64_t first, int64_t second);

// True for the one caller that may sync after an arrival: a drive with several notices is one arrival.
// `lastMs` is the tick of the last such sync, 0 for none yet.
bool TakeArrivalTurn(std::atomic<uint64_t>& lastMs, uint64_t nowMs);

}  // namespace quilmark
