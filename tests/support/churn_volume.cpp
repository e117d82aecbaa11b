#include "support/churn_volume.h"

#include <algorithm>

#include "platform/bytes.h"
#include "platform/file_reference.h"
#include "platform/usn_record.h"
#include "support/ntfs_builder.h"

namespace quilmark {

namespace {

constexpr uint32_t kFirstNumber = 24, kMostFiles = 12'000, kMostFolders = 400;
constexpr uint32_t kClose = 0x8000'0000, kHardLinkChange = 0x0001'0000;
constexpr size_t kBlockBytes = 65'536;

}  // namespace

ChurnVolume::ChurnVolume(DeviceScript& script, uint32_t seed) : random_(seed) {
  slots_.resize(kFirstNumber);
  Slot& root = slots_[5];
  root.sequence = 5;
  root.inUse = true;
  const uint64_t frn = MakeReference(5, 5);
  root.file = {.frn = frn, .parentFrn = frn, .name = u".", .isDirectory = true, .facts = {}};
  folders_.push_back(5);
  script.Play([this](uint32_t code, std::span<const std::byte> input) { return Play(code, input); });
  script.PlayFacts([this](uint64_t asked) -> std::optional<FileFacts> {
    const std::scoped_lock lock(mutex_);
    const File* const file = isPulled_ ? nullptr : Find(asked);
    return file != nullptr ? std::optional(file->facts) : std::nullopt;
  });
}

const ChurnVolume::File* ChurnVolume::Find(uint64_t frn) const {
  const uint64_t number = RecordNumberOf(frn);
  const bool isThere = number < slots_.size() && slots_[number].inUse && slots_[number].file.frn == frn;
  return isThere ? &slots_[number].file : nullptr;
}

std::vector<uint64_t> ChurnVolume::AliveFrns() const {
  std::vector<uint64_t> frns;
  for (const Slot& slot : slots_) {
    if (slot.inUse) frns.push_back(slot.file.frn);
  }
  return frns;
}

std::vector<uint64_t> ChurnVolume::TakeTouched() { return std::exchange(touched_, {}); }

void ChurnVolume::Change(size_t count) {
  for (size_t i = 0; i < count; ++i) {
    const std::scoped_lock lock(mutex_);
    ChangeOne();
  }
  changed_.notify_all();
}

void ChurnVolume::PassTurns(int turns) {
  std::unique_lock lock(mutex_);
  turns_ = turns;
  changed_.notify_all();
  changed_.wait(lock, [&] { return turns_ == 0 && isWaiting_; });
}

void ChurnVolume::SetReleased(bool isReleased) {
  const std::scoped_lock lock(mutex_);
  isReleased_ = isReleased;
  changed_.notify_all();
}

void ChurnVolume::SetPulled(bool isPulled) {
  const std::scoped_lock lock(mutex_);
  isPulled_ = isPulled;
  changed_.notify_all();
}

void ChurnVolume::Wrap() {
  const std::scoped_lock lock(mutex_);
  journal_.clear();
  nextUsn_ += 4'096;
  lostBelow_ = nextUsn_;
  changed_.notify_all();
}

std::optional<ChurnVolume::Answer> ChurnVolume::Play(uint32_t code, std::span<const std::byte> input) {
  std::unique_lock lock(mutex_);
  if (isPulled_) return Answer{.error = kErrorDeviceNotConnected, .output = {}};
  switch (code) {
    case kFsctlQueryUsnJournal:
      return Answer{.output = JournalData(77, nextUsn_)};
    case kFsctlEnumUsnData:
      return Enumerate(RecordNumberOf(LoadLe<uint64_t>(input, 0)));
    case kFsctlReadUsnJournal:
      return Read(lock, LoadLe<int64_t>(input, 0), LoadLe<uint32_t>(input, 8));
    case kFsctlGetNtfsFileRecord:
      return RecordNear(LoadLe<uint64_t>(input, 0));
    default:
      return Answer{.error = kErrorInvalidFunction, .output = {}};
  }
}

ChurnVolume::Answer ChurnVolume::Enumerate(uint64_t number) const {
  UsnBlockBuilder block;
  for (; number < slots_.size(); ++number) {
    const auto& [sequence, inUse, place, file] = slots_[number];
    if (!inUse) continue;
    if (block.Size() + UsnRecordLength(file.name.size()) > kBlockBytes) break;
    block.Record(file.frn, file.parentFrn, file.name, 0, file.isDirectory ? kFileAttributeDirectory : 0);
  }
  if (block.Size() == kUsnPositionBytes) return {.error = kErrorHandleEof, .output = {}};
  block.SetPosition(static_cast<int64_t>(number));
  return {.output = block};
}

ChurnVolume::Answer ChurnVolume::Read(std::unique_lock<std::mutex>& lock, int64_t usn,
                                      uint32_t reasons) {
  for (;;) {
    if (isPulled_) return {.error = kErrorDeviceNotConnected, .output = {}};
    if (usn < lostBelow_) return {.error = kErrorJournalEntryDeleted, .output = {}};
    UsnBlockBuilder block;
    int64_t next = usn;
    const bool isOfNames = reasons == kUsnReasonsOfNames;
    const bool isEmpty = Fill(block, usn, reasons, next) == 0;
    if (!isEmpty || !isOfNames || isReleased_ || turns_ > 0) {
      if (isEmpty && isOfNames && turns_ > 0) --turns_;
      block.SetPosition(next);
      return {.output = block};
    }
    isWaiting_ = true;
    changed_.notify_all();
    changed_.wait(lock);
    isWaiting_ = false;
  }
}

size_t ChurnVolume::Fill(UsnBlockBuilder& block, int64_t usn, uint32_t reasons, int64_t& next) const {
  auto change = std::lower_bound(journal_.begin(), journal_.end(), usn,
                                 [](const Told& one, int64_t place) { return one.usn < place; });
  size_t records = 0;
  for (; change != journal_.end(); ++change) {
    if ((change->reason & reasons) == 0) continue;
    if (block.Size() + UsnRecordLength(change->name.size()) > kBlockBytes) break;
    block.Record(change->frn, change->parentFrn, change->name, change->reason,
                 change->isDirectory ? kFileAttributeDirectory : 0, change->usn);
    ++records;
  }
  next = change == journal_.end() ? nextUsn_ : change->usn;
  return records;
}

ChurnVolume::Answer ChurnVolume::RecordNear(uint64_t number) const {
  number = std::min<uint64_t>(number, slots_.size() - 1);
  while (!slots_[number].inUse) {
    if (number-- == 0) return {.error = kErrorHandleEof, .output = {}};
  }
  const File& file = slots_[number].file;
  RecordBuilder record;
  record.StandardInformation().Dates(file.facts.created, file.facts.modified);
  if (!file.isDirectory) record.NonResident(kData, {}, MappingPairs({{900, 2}}), file.facts.size);
  const Bytes bytes =
      record.Finish({.sequence = SequenceOf(file.frn), .inUse = true, .isDirectory = file.isDirectory});
  Bytes data(12);
  StoreLe(std::span(data), 0, number);
  StoreLe(std::span(data), 8, static_cast<uint32_t>(bytes.size()));
  data.insert(data.end(), bytes.begin(), bytes.end());
  return {.output = data};
}

std::u16string ChurnVolume::AnyName() {
  std::u16string name;
  for (uint32_t i = 2 + Number(10); i != 0; --i) name += static_cast<char16_t>(u'a' + Number(16));
  return name;
}

ChurnVolume::Slot& ChurnVolume::Make(bool isDirectory) {
  uint32_t number = 0;
  if (free_.empty()) {
    number = static_cast<uint32_t>(slots_.size());
    slots_.emplace_back();
  } else {
    const size_t pick = Number(free_.size());
    number = free_[pick];
    free_[pick] = free_.back();
    free_.pop_back();
    ++slots_[number].sequence;
  }
  Slot& slot = slots_[number];
  slot.inUse = true;
  slot.file = {.frn = MakeReference(number, slot.sequence),
               .parentFrn = AnyFolder(),
               .name = AnyName(),
               .isDirectory = isDirectory,
               .facts = {.size = Number(isDirectory ? 1 : 100'000),
                         .modified = 1 + Number(1'000'000),
                         .created = 1 + Number(1'000'000),
                         .isDirectory = isDirectory}};
  auto& list = isDirectory ? folders_ : files_;
  slot.place = list.size();
  list.push_back(number);
  return slot;
}

// Folders stay.
void ChurnVolume::Free(Slot& slot) {
  slot.inUse = false;
  const auto number = static_cast<uint32_t>(RecordNumberOf(slot.file.frn));
  slots_[files_.back()].place = slot.place;
  files_[slot.place] = files_.back();
  files_.pop_back();
  free_.push_back(number);
}

void ChurnVolume::Tell(const File& file, uint32_t reason) {
  journal_.push_back({nextUsn_, reason, file.frn, file.parentFrn, file.isDirectory, file.name});
  nextUsn_ += static_cast<int64_t>(UsnRecordLength(file.name.size()));
  if (touched_.empty() || touched_.back() != file.frn) touched_.push_back(file.frn);
}

// As NTFS does: the record of the last handle says all that happened since the first.
void ChurnVolume::TellUntilClosed(const File& file, uint32_t reason) {
  Tell(file, reason);
  Tell(file, reason | kClose);
}

void ChurnVolume::Rename(Slot& slot, bool moves) {
  Tell(slot.file, kUsnReasonRenameOldName);
  slot.file.name = AnyName();
  if (moves && !slot.file.isDirectory) slot.file.parentFrn = AnyFolder();
}

void ChurnVolume::Write(Slot& slot) {
  constexpr uint32_t kReasons[] = {kUsnReasonDataExtend, kUsnReasonDataOverwrite,
                                   kUsnReasonDataTruncation, kUsnReasonBasicInfoChange};
  const uint32_t reason = kReasons[Number(std::size(kReasons))];
  FileFacts& facts = slot.file.facts;
  facts.modified = 1 + Number(1'000'000);
  if (reason == kUsnReasonDataExtend) facts.size += 1 + Number(1'000);
  if (reason == kUsnReasonDataTruncation) facts.size /= 2;
  if (reason == kUsnReasonBasicInfoChange) facts.created = 1 + Number(1'000'000);
  TellUntilClosed(slot.file, reason);
}

void ChurnVolume::ChangeOne() {
  const uint32_t kind = Number(100);
  if (kind < 30 && files_.size() < kMostFiles) {
    const bool isDirectory = folders_.size() < kMostFolders && kind < 2;
    TellUntilClosed(Make(isDirectory).file,
                    kUsnReasonFileCreate | (isDirectory ? 0 : kUsnReasonDataExtend));
  } else if (kind < 38 || files_.empty()) {  // comes and goes under one handle
    Slot& slot = Make(false);
    if (kind % 2 == 0) Tell(slot.file, kUsnReasonFileCreate);
    Tell(slot.file, kUsnReasonFileCreate | kUsnReasonFileDelete | kClose);
    Free(slot);
  } else if (kind < 58) {
    Slot& slot = kind == 40 ? slots_[folders_[Number(folders_.size())]] : AnyFile();
    if (&slot == &slots_[5]) return;
    Rename(slot, kind < 48);
    TellUntilClosed(slot.file, kUsnReasonRenameNewName);
  } else if (kind < 60) {  // renamed and deleted under one handle
    Slot& slot = AnyFile();
    Rename(slot, false);
    Tell(slot.file, kUsnReasonRenameNewName | kUsnReasonFileDelete | kClose);
    Free(slot);
  } else if (kind < 75) {
    Slot& slot = AnyFile();
    Tell(slot.file, kUsnReasonFileDelete | kClose);
    Free(slot);
  } else if (kind < 80) {  // another name of the file comes or goes: the index keeps the one it has
    TellUntilClosed(AnyFile().file, kHardLinkChange);
  } else {
    Write(AnyFile());
  }
}

}  // namespace quilmark
