// A volume that plays back what a test wrote down, and remembers what it was asked.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/volume_device.h"

namespace quilmark {

using Bytes = std::vector<std::byte>;

// Blocks of USN records as FSCTL_ENUM_USN_DATA and FSCTL_READ_USN_JOURNAL deliver them.
class UsnBlockBuilder {
 public:
  explicit UsnBlockBuilder(int64_t position = 0);
  UsnBlockBuilder& Record(uint64_t frn, uint64_t parentFrn, std::u16string_view name,
                          uint32_t reason = 0, uint32_t attributes = 0, int64_t usn = 0);
  size_t Size() const { return bytes_.size(); }
  void SetPosition(int64_t position);
  // A record whose RecordLength says `length` and that has nothing behind its 64 bytes.
  UsnBlockBuilder& RawLength(uint32_t length);
  // A record whose name runs past its end.
  UsnBlockBuilder& LongName(uint64_t frn);
  operator const Bytes&() const { return bytes_; }
  operator std::span<const std::byte>() const { return bytes_; }

 private:
  Bytes bytes_;
};

// What FSCTL_GET_NTFS_FILE_RECORD gives: the record of `frn`, with nothing but a header.
Bytes FileRecordData(uint64_t frn, bool inUse = true);

// Stands for FSCTL_READ_USN_JOURNAL where it asks for other changes than those of names.
inline constexpr uint32_t kReadOfDataChanges = 0xFFFF'00BB;

Bytes JournalData(uint64_t journalId, int64_t nextUsn);  // USN_JOURNAL_DATA, 56 bytes

// What every device of one drive shares: answers, and what was asked. Any thread.
class DeviceScript {
 public:
  struct Answer {
    uint32_t error = 0;
    Bytes output;
    std::function<void()> meanwhile = nullptr;  // called before the answer is given
  };
  struct Asked {
    uint32_t code = 0;
    Bytes input;
    size_t outputSize = 0;
    uintptr_t outputAddress = 0;
  };

  // The next answer to `code`, after those that were queued before. Without one, FSCTL_ENUM_USN_DATA
  // gives error 38, FSCTL_READ_USN_JOURNAL its own position and no records, anything else error 1.
  void Queue(uint32_t code, Answer answer);
  // FSCTL_ENUM_USN_DATA gives `block` for ever once nothing is queued.
  void RepeatBlock(Bytes block);
  void QueueError(uint32_t code, uint32_t error) { Queue(code, {.error = error, .output = {}}); }
  // Answers every call where it gives an answer; what it is asked is then not kept. Called without a
  // lock.
  using Volume = std::function<std::optional<Answer>(uint32_t code, std::span<const std::byte> input)>;
  void Play(Volume volume);
  // Answers ReadFacts; nobody else does.
  using Facts = std::function<std::optional<FileFacts>(uint64_t reference)>;
  void PlayFacts(Facts facts);
  // Open calls that fail with `error`, one after another, before one succeeds.
  void QueueOpenError(uint32_t error);
  // The next Close gives this error.
  void FailClose(uint32_t error);

  std::vector<Asked> TakeAsked();
  std::vector<uint32_t> AskedCodes() const;
  // Waits until `code` was asked `count` times.
  bool WaitForAsked(uint32_t code, size_t count, int longestSeconds = 60);
  size_t AskedCount(uint32_t code) const;
  int OpenDevices() const;
  // Numbers of the notices that live, in the order in which they were asked for.
  std::vector<uintptr_t> Notices() const;
  std::vector<VolumeAccess> Opens() const;
  // Makes reads of the journal wait until Cancel or Close, as a device does that is slow to answer.
  void HoldJournalReads(bool hold);
  // The next `count` calls of Cancel miss, as one does whose call has yet to begin.
  void MissCancels(int count);

 private:
  friend class ScriptedDevice;
  friend struct ScriptedNotice;
  friend std::unique_ptr<VolumeDevice> OpenScripted(std::u16string_view, VolumeAccess, uint32_t&);
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::map<uint32_t, std::deque<Answer>> answers_;
  Bytes repeated_;
  std::shared_ptr<const Volume> played_;
  std::shared_ptr<const Facts> facts_;
  std::deque<uint32_t> openErrors_;
  std::vector<Asked> asked_;
  std::map<uint32_t, size_t> counts_;
  std::vector<VolumeAccess> opens_;
  int openDevices_ = 0;
  std::vector<uintptr_t> notices_;
  uint32_t closeError_ = 0;
  bool holdReads_ = false;
  int cancelsToMiss_ = 0;
};

// Makes BuildNtfsVolume open scripted devices for the lifetime of the object; a drive without a script
// cannot be opened (error 2).
class ScriptedVolumes {
 public:
  ScriptedVolumes();
  ~ScriptedVolumes();
  DeviceScript& Script(std::u16string_view drive);  // made at the first call
  std::unique_ptr<VolumeDevice> Open(std::u16string_view drive);
};

}  // namespace quilmark
