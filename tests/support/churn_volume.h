// A volume that is changed at random, with a journal that tells of it: what a device of a script plays,
// and what an index of it has to say.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "platform/file_facts.h"
#include "support/scripted_device.h"

namespace quilmark {

class ChurnVolume {
 public:
  struct File {
    uint64_t frn = 0, parentFrn = 0;
    std::u16string name;
    bool isDirectory = false;
    FileFacts facts;
  };

  // Has the script play the volume from now on.
  ChurnVolume(DeviceScript& script, uint32_t seed);

  // One thread changes and asks for the files; the devices answer on others.
  void Change(size_t count);
  const File* Find(uint64_t frn) const;     // null: there is no such file
  std::vector<uint64_t> AliveFrns() const;  // the root too
  std::vector<uint64_t> TakeTouched();      // by the changes since the last call

  // The monitor's clock: it waits at the end of the journal until so many of its turns may pass. Returns
  // when they have, and all that stood in the journal was read.
  void PassTurns(int turns);
  // Nobody waits any more, or again.
  void SetReleased(bool isReleased);
  void SetPulled(bool isPulled);  // every call finds no device
  void Wrap();                    // the journal loses all that it has; whoever waits is out

 private:
  struct Slot {
    uint16_t sequence = 1;
    bool inUse = false;
    size_t place = 0;  // in files_ or folders_
    File file;
  };
  struct Told {
    int64_t usn = 0;
    uint32_t reason = 0;
    uint64_t frn = 0, parentFrn = 0;
    bool isDirectory = false;
    std::u16string name;
  };
  using Answer = DeviceScript::Answer;

  std::optional<Answer> Play(uint32_t code, std::span<const std::byte> input);
  Answer Enumerate(uint64_t number) const;
  Answer Read(std::unique_lock<std::mutex>& lock, int64_t usn, uint32_t reasons);
  size_t Fill(UsnBlockBuilder& block, int64_t usn, uint32_t reasons, int64_t& next) const;
  Answer RecordNear(uint64_t number) const;

  uint32_t Number(size_t below) { return static_cast<uint32_t>(random_() % below); }
  std::u16string AnyName();
  uint64_t AnyFolder() { return slots_[folders_[Number(folders_.size())]].file.frn; }
  Slot& AnyFile() { return slots_[files_[Number(files_.size())]]; }
  Slot& Make(bool isDirectory);
  void Free(Slot& slot);
  void Tell(const File& file, uint32_t reason);
  void TellUntilClosed(const File& file, uint32_t reason);
  void ChangeOne();
  void Rename(Slot& slot, bool moves);
  void Write(Slot& slot);

  mutable std::mutex mutex_;  // all below
  std::condition_variable changed_;
  std::mt19937 random_;
  std::vector<Slot> slots_;  // by record number
  std::vector<uint32_t> free_, files_, folders_;
  std::deque<Told> journal_;
  std::vector<uint64_t> touched_;
  int64_t nextUsn_ = 4'096, lostBelow_ = 0;
  int turns_ = 0;
  bool isWaiting_ = false, isReleased_ = false, isPulled_ = false;
};

}  // namespace quilmark
