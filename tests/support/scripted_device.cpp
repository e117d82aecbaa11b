#include "support/scripted_device.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <utility>

#include "index/build/ntfs_volume.h"
#include "platform/bytes.h"
#include "platform/file_reference.h"
#include "platform/usn_record.h"
#include "support/ntfs_builder.h"

namespace quilmark {

namespace {

// The scripts of the drives, for OpenScripted.
struct Scripts {
  std::mutex mutex;
  std::map<std::u16string, std::shared_ptr<DeviceScript>, std::less<>> byDrive;
};
Scripts& AllScripts() {
  static Scripts scripts;
  return scripts;
}

std::shared_ptr<DeviceScript> ScriptOf(std::u16string_view drive) {
  const std::scoped_lock lock(AllScripts().mutex);
  const auto found = AllScripts().byDrive.find(drive);
  return found == AllScripts().byDrive.end() ? nullptr : found->second;
}

}  // namespace

struct ScriptedNotice : DeviceNotice {
  explicit ScriptedNotice(std::shared_ptr<DeviceScript> script) : script_(std::move(script)) {
    static std::atomic<uintptr_t> latest = 0;
    id = ++latest;
    const std::scoped_lock lock(script_->mutex_);
    script_->notices_.push_back(id);
  }
  ~ScriptedNotice() override {
    const std::scoped_lock lock(script_->mutex_);
    std::erase(script_->notices_, id);
  }

 private:
  const std::shared_ptr<DeviceScript> script_;
};

class ScriptedDevice : public VolumeDevice {
 public:
  explicit ScriptedDevice(std::shared_ptr<DeviceScript> script) : script_(std::move(script)) {}
  ~ScriptedDevice() override { Close(); }

  Reply Control(uint32_t asked, std::span<const std::byte> input, std::span<std::byte> output) override {
    const bool isOfData = asked == kFsctlReadUsnJournal && input.size() >= 12 &&
                          (LoadLe<uint32_t>(input, 8) & kUsnReasonDataOverwrite) != 0;
    const uint32_t code = isOfData ? kReadOfDataChanges : asked;
    std::unique_lock lock(script_->mutex_);
    if (isClosed_) return {.error = kErrorInvalidHandle};
    const auto played = script_->played_;
    if (played == nullptr) {
      script_->asked_.push_back({code, Bytes(input.begin(), input.end()), output.size(),
                                 reinterpret_cast<uintptr_t>(output.data())});
    }
    ++script_->counts_[code];
    script_->changed_.notify_all();
    if (code == kFsctlReadUsnJournal) {
      const uint64_t cancels = cancels_;
      script_->changed_.wait(lock,
                             [&] { return !script_->holdReads_ || cancels_ != cancels || isClosed_; });
      if (cancels_ != cancels || isClosed_) return {.error = kErrorOperationAborted};
    }
    if (played != nullptr) {
      lock.unlock();
      if (const auto answer = (*played)(asked, input)) return Give(*answer, output);
      lock.lock();
    }
    const auto answer = TakeAnswer(code, input);
    lock.unlock();
    if (answer.meanwhile) answer.meanwhile();
    return Give(answer, output);
  }

  Reply ReadAt(ByteOffset, std::span<std::byte>) override { return {.error = kErrorInvalidFunction}; }

  std::shared_ptr<const DeviceNotice> TellWindow(PostTarget) override {
    return std::make_shared<ScriptedNotice>(script_);
  }

  std::optional<FileFacts> ReadFacts(FileReference reference) override {
    std::unique_lock lock(script_->mutex_);
    const auto facts = isClosed_ ? nullptr : script_->facts_;
    lock.unlock();
    return facts != nullptr ? (*facts)(reference.value) : std::nullopt;
  }

  void Cancel() override {
    const std::scoped_lock lock(script_->mutex_);
    if (script_->cancelsToMiss_ > 0) {
      --script_->cancelsToMiss_;
      return;
    }
    ++cancels_;
    script_->changed_.notify_all();
  }

  uint32_t Close() override {
    const std::scoped_lock lock(script_->mutex_);
    if (std::exchange(isClosed_, true)) return 0;
    --script_->openDevices_;
    script_->changed_.notify_all();
    return std::exchange(script_->closeError_, 0);
  }

 private:
  DeviceScript::Answer TakeAnswer(uint32_t code, std::span<const std::byte> input) {
    auto& queued = script_->answers_[code];
    if (!queued.empty()) {
      auto answer = std::move(queued.front());
      queued.pop_front();
      return answer;
    }
    const bool isRepeated = code == kFsctlEnumUsnData && !script_->repeated_.empty();
    if (isRepeated) return {.error = 0, .output = script_->repeated_};
    if (code == kFsctlEnumUsnData) return {.error = kErrorHandleEof, .output = {}};
    // StartUsn is what the input opens with.
    if (code == kFsctlReadUsnJournal || code == kReadOfDataChanges)
      return {.error = 0, .output = Bytes(input.begin(), input.begin() + 8)};
    return {.error = kErrorInvalidFunction, .output = {}};
  }

  static Reply Give(const DeviceScript::Answer& answer, std::span<std::byte> output) {
    if (answer.output.size() > output.size()) return {.error = kErrorMoreData};
    std::copy(answer.output.begin(), answer.output.end(), output.begin());
    return {.error = answer.error, .bytes = answer.error == 0 ? answer.output.size() : 0};
  }

  const std::shared_ptr<DeviceScript> script_;
  uint64_t cancels_ = 0;   // script_->mutex_
  bool isClosed_ = false;  // script_->mutex_
};

std::unique_ptr<VolumeDevice> OpenScripted(std::u16string_view drive, VolumeAccess access,
                                           uint32_t& error) {
  const auto script = ScriptOf(drive);
  error = kErrorFileNotFound;
  if (script == nullptr) return nullptr;
  const std::scoped_lock lock(script->mutex_);
  script->opens_.push_back(access);
  if (!script->openErrors_.empty()) {
    error = script->openErrors_.front();
    script->openErrors_.pop_front();
    return nullptr;
  }
  error = 0;
  ++script->openDevices_;
  return std::make_unique<ScriptedDevice>(script);
}

UsnBlockBuilder::UsnBlockBuilder(int64_t position) : bytes_(8) {
  StoreLe(std::span(bytes_), 0, position);
}

UsnBlockBuilder& UsnBlockBuilder::Record(uint64_t frn, uint64_t parentFrn, std::u16string_view name,
                                         uint32_t reason, uint32_t attributes, int64_t usn) {
  const size_t offset = bytes_.size();
  bytes_.resize(offset + UsnRecordLength(name.size()));
  PutUsnRecord(std::span(bytes_).subspan(offset),
               {.frn = FileReference(frn),
                .parentFrn = FileReference(parentFrn),
                .usn = usn,
                .reason = reason,
                .attributes = attributes,
                .name = std::as_bytes(std::span(name))},
               0);
  return *this;
}

void UsnBlockBuilder::SetPosition(int64_t position) { StoreLe(std::span(bytes_), 0, position); }

UsnBlockBuilder& UsnBlockBuilder::RawLength(uint32_t length) {
  const size_t offset = bytes_.size();
  bytes_.resize(offset + 64);
  StoreLe(std::span(bytes_), offset, length);
  return *this;
}

UsnBlockBuilder& UsnBlockBuilder::LongName(uint64_t frn) {
  const size_t offset = bytes_.size();
  Record(frn, 5, u"n");
  StoreLe(std::span(bytes_), offset + 56, uint16_t{6});  // one unit past the end of the 64 bytes
  return *this;
}

Bytes FileRecordData(uint64_t frn, bool inUse) {
  Bytes data(12);
  StoreLe(std::span(data), 0, RecordNumberOf(frn));
  const Bytes record = RecordBuilder().Finish({.sequence = SequenceOf(frn), .inUse = inUse});
  StoreLe(std::span(data), 8, static_cast<uint32_t>(record.size()));
  data.insert(data.end(), record.begin(), record.end());
  return data;
}

Bytes JournalData(uint64_t journalId, int64_t nextUsn) {
  Bytes data(56);
  StoreLe(std::span(data), 0, journalId);
  StoreLe(std::span(data), 16, nextUsn);
  return data;
}

void DeviceScript::Queue(uint32_t code, Answer answer) {
  const std::scoped_lock lock(mutex_);
  answers_[code].push_back(std::move(answer));
}

void DeviceScript::Play(Volume volume) {
  const std::scoped_lock lock(mutex_);
  played_ = volume ? std::make_shared<const Volume>(std::move(volume)) : nullptr;
}

void DeviceScript::PlayFacts(Facts facts) {
  const std::scoped_lock lock(mutex_);
  facts_ = std::make_shared<const Facts>(std::move(facts));
}

void DeviceScript::RepeatBlock(Bytes block) {
  const std::scoped_lock lock(mutex_);
  repeated_ = std::move(block);
}

void DeviceScript::QueueOpenError(uint32_t error) {
  const std::scoped_lock lock(mutex_);
  openErrors_.push_back(error);
}

void DeviceScript::FailClose(uint32_t error) {
  const std::scoped_lock lock(mutex_);
  closeError_ = error;
}

std::vector<DeviceScript::Asked> DeviceScript::TakeAsked() {
  const std::scoped_lock lock(mutex_);
  return std::exchange(asked_, {});
}

std::vector<uint32_t> DeviceScript::AskedCodes() const {
  const std::scoped_lock lock(mutex_);
  std::vector<uint32_t> codes;
  for (const Asked& asked : asked_) codes.push_back(asked.code);
  return codes;
}

bool DeviceScript::WaitForAsked(uint32_t code, size_t count, int longestSeconds) {
  std::unique_lock lock(mutex_);
  return changed_.wait_for(lock, std::chrono::seconds(longestSeconds),
                           [&] { return counts_[code] >= count; });
}

size_t DeviceScript::AskedCount(uint32_t code) const {
  const std::scoped_lock lock(mutex_);
  const auto count = counts_.find(code);
  return count == counts_.end() ? 0 : count->second;
}

std::vector<uintptr_t> DeviceScript::Notices() const {
  const std::scoped_lock lock(mutex_);
  return notices_;
}

int DeviceScript::OpenDevices() const {
  const std::scoped_lock lock(mutex_);
  return openDevices_;
}

std::vector<VolumeAccess> DeviceScript::Opens() const {
  const std::scoped_lock lock(mutex_);
  return opens_;
}

void DeviceScript::HoldJournalReads(bool hold) {
  const std::scoped_lock lock(mutex_);
  holdReads_ = hold;
  changed_.notify_all();
}

void DeviceScript::MissCancels(int count) {
  const std::scoped_lock lock(mutex_);
  cancelsToMiss_ = count;
}

ScriptedVolumes::ScriptedVolumes() { InstallVolumeOpener(OpenScripted); }

ScriptedVolumes::~ScriptedVolumes() {
  InstallVolumeOpener(nullptr);
  const std::scoped_lock lock(AllScripts().mutex);
  AllScripts().byDrive.clear();
}

DeviceScript& ScriptedVolumes::Script(std::u16string_view drive) {
  const std::scoped_lock lock(AllScripts().mutex);
  auto& script = AllScripts().byDrive[std::u16string(drive)];
  if (script == nullptr) script = std::make_shared<DeviceScript>();
  return *script;
}

std::unique_ptr<VolumeDevice> ScriptedVolumes::Open(std::u16string_view drive) {
  uint32_t error = 0;
  return OpenScripted(drive, VolumeAccess::kRead, error);
}

}  // namespace quilmark
