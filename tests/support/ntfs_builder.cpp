#include "support/ntfs_builder.h"

#include <algorithm>
#include <cstring>

#include "platform/bytes.h"
#include "platform/ntfs/mft_reader.h"

namespace quilmark {

namespace {

constexpr size_t kFirstAttribute = 56, kFixups = 48;
constexpr uint64_t kVolumeClusters = 4'096;
constexpr uint64_t kJournalRecord = 24, kJournalCluster = 1'000;

void PutName(Bytes& bytes, size_t offset, std::u16string_view name) {
  const auto units = std::as_bytes(std::span(name));
  std::copy(units.begin(), units.end(), bytes.begin() + static_cast<ptrdiff_t>(offset));
}

size_t Aligned(size_t size) { return (size + 7) / 8 * 8; }

// Takes the last two bytes of every 512 to the header.
void PutFixups(Bytes& block, size_t offset) {
  constexpr uint16_t kNumber = 7;
  StoreLe(std::span(block), 4, static_cast<uint16_t>(offset));
  StoreLe(std::span(block), 6, static_cast<uint16_t>(block.size() / 512 + 1));
  StoreLe(std::span(block), offset, kNumber);
  for (size_t i = 0; i < block.size() / 512; ++i) {
    const size_t last = (i + 1) * 512 - 2;
    StoreLe(std::span(block), offset + 2 + i * 2, LoadLe<uint16_t>(block, last));
    StoreLe(std::span(block), last, kNumber);
  }
}

Bytes FileNameBytes(uint64_t parent, std::u16string_view name, NameSpace space) {
  Bytes value(66 + name.size() * 2);
  StoreLe(std::span(value), 0, parent);
  StoreLe(std::span(value), 64, static_cast<uint8_t>(name.size()));
  StoreLe(std::span(value), 65, static_cast<uint8_t>(space));
  PutName(value, 66, name);
  return value;
}

// The entries behind an index header at `header`, and the header itself.
void PutEntries(Bytes& bytes, size_t header,
                const std::vector<std::pair<uint64_t, std::u16string_view>>& entries, size_t first) {
  size_t offset = header + first;
  for (const auto& [reference, name] : entries) {
    const Bytes key = FileNameBytes(0, name, NameSpace::kWin32);
    const size_t length = Aligned(16 + key.size());
    bytes.resize(std::max(bytes.size(), offset + length + 16));
    StoreLe(std::span(bytes), offset, reference);
    StoreLe(std::span(bytes), offset + 8, static_cast<uint16_t>(length));
    StoreLe(std::span(bytes), offset + 10, static_cast<uint16_t>(key.size()));
    std::copy(key.begin(), key.end(), bytes.begin() + static_cast<ptrdiff_t>(offset + 16));
    offset += length;
  }
  bytes.resize(std::max(bytes.size(), offset + 16));
  StoreLe(std::span(bytes), offset + 8, uint16_t{16});
  StoreLe(std::span(bytes), offset + 12, uint16_t{2});  // the last entry
  StoreLe(std::span(bytes), header, static_cast<uint32_t>(first));
  StoreLe(std::span(bytes), header + 4, static_cast<uint32_t>(offset + 16 - header));
}

}  // namespace

RecordBuilder::RecordBuilder() : bytes_(kBuiltRecordBytes), used_(kFirstAttribute) {}

RecordBuilder& RecordBuilder::Resident(uint32_t type, std::u16string_view name, const Bytes& value) {
  const size_t nameAt = 24, valueAt = Aligned(nameAt + name.size() * 2);
  const size_t length = Aligned(valueAt + value.size());
  if (used_ + length + 8 > bytes_.size()) throw std::length_error("record is full");
  StoreLe(std::span(bytes_), used_, type);
  StoreLe(std::span(bytes_), used_ + 4, static_cast<uint32_t>(length));
  StoreLe(std::span(bytes_), used_ + 9, static_cast<uint8_t>(name.size()));
  StoreLe(std::span(bytes_), used_ + 10, static_cast<uint16_t>(nameAt));
  StoreLe(std::span(bytes_), used_ + 16, static_cast<uint32_t>(value.size()));
  StoreLe(std::span(bytes_), used_ + 20, static_cast<uint16_t>(valueAt));
  PutName(bytes_, used_ + nameAt, name);
  std::copy(value.begin(), value.end(), bytes_.begin() + static_cast<ptrdiff_t>(used_ + valueAt));
  last_ = used_;
  used_ += length;
  return *this;
}

RecordBuilder& RecordBuilder::NonResident(uint32_t type, std::u16string_view name, const Bytes& runs,
                                          uint64_t size, uint64_t lowestVcn) {
  const size_t nameAt = 64, runsAt = Aligned(nameAt + name.size() * 2);
  const size_t length = Aligned(runsAt + runs.size());
  if (used_ + length + 8 > bytes_.size()) throw std::length_error("record is full");
  StoreLe(std::span(bytes_), used_, type);
  StoreLe(std::span(bytes_), used_ + 4, static_cast<uint32_t>(length));
  StoreLe(std::span(bytes_), used_ + 8, uint8_t{1});
  StoreLe(std::span(bytes_), used_ + 9, static_cast<uint8_t>(name.size()));
  StoreLe(std::span(bytes_), used_ + 10, static_cast<uint16_t>(nameAt));
  StoreLe(std::span(bytes_), used_ + 16, lowestVcn);
  StoreLe(std::span(bytes_), used_ + 32, static_cast<uint16_t>(runsAt));
  StoreLe(std::span(bytes_), used_ + 40,
          (size + kBuiltClusterBytes - 1) / kBuiltClusterBytes * kBuiltClusterBytes);
  StoreLe(std::span(bytes_), used_ + 48, size);
  StoreLe(std::span(bytes_), used_ + 56, size);
  PutName(bytes_, used_ + nameAt, name);
  std::copy(runs.begin(), runs.end(), bytes_.begin() + static_cast<ptrdiff_t>(used_ + runsAt));
  last_ = used_;
  used_ += length;
  return *this;
}

RecordBuilder& RecordBuilder::Initialized(uint64_t bytes) {
  StoreLe(std::span(bytes_), last_ + 56, bytes);
  return *this;
}

RecordBuilder& RecordBuilder::StandardInformation(uint32_t attributes, int64_t usn) {
  Bytes value(72);
  StoreLe(std::span(value), 32, attributes);
  StoreLe(std::span(value), 64, usn);
  return Resident(kStandardInformation, {}, value);
}

RecordBuilder& RecordBuilder::Dates(uint64_t created, uint64_t modified) {
  const size_t value = last_ + LoadLe<uint16_t>(bytes_, last_ + 20);
  StoreLe(std::span(bytes_), value, created);
  StoreLe(std::span(bytes_), value + 8, modified);
  return *this;
}

RecordBuilder& RecordBuilder::FileName(uint64_t parent, std::u16string_view name, NameSpace space) {
  return Resident(kFileName, {}, FileNameBytes(parent, name, space));
}

Bytes RecordBuilder::ListValue(const std::vector<Listed>& entries) {
  Bytes value;
  for (const Listed& entry : entries) {
    const size_t offset = value.size();
    const size_t length = Aligned(26 + entry.name.size() * 2);
    value.resize(offset + length);
    StoreLe(std::span(value), offset, entry.type);
    StoreLe(std::span(value), offset + 4, static_cast<uint16_t>(length));
    StoreLe(std::span(value), offset + 6, static_cast<uint8_t>(entry.name.size()));
    StoreLe(std::span(value), offset + 7, uint8_t{26});
    StoreLe(std::span(value), offset + 8, entry.lowestVcn);
    StoreLe(std::span(value), offset + 16, entry.holder);
    PutName(value, offset + 26, entry.name);
  }
  return value;
}

Bytes RecordBuilder::Finish(const Header& header) const {
  Bytes record = bytes_;
  std::memcpy(record.data(), "FILE", 4);
  StoreLe(std::span(record), 16, header.sequence);
  StoreLe(std::span(record), 18, uint16_t{1});
  StoreLe(std::span(record), 20, static_cast<uint16_t>(kFirstAttribute));
  const unsigned flags = (header.inUse ? 1u : 0u) | (header.isDirectory ? 2u : 0u);
  StoreLe(std::span(record), 22, static_cast<uint16_t>(flags));
  StoreLe(std::span(record), used_, 0xFFFF'FFFFu);
  StoreLe(std::span(record), 24, static_cast<uint32_t>(used_ + 8));
  StoreLe(std::span(record), 28, kBuiltRecordBytes);
  StoreLe(std::span(record), 32, header.baseReference);
  PutFixups(record, kFixups);
  return record;
}

Bytes MappingPairs(const std::vector<std::pair<int64_t, uint64_t>>& runs) {
  Bytes pairs;
  int64_t before = 0;
  const auto put = [&](uint64_t value) {
    for (int i = 0; i < 8; ++i) pairs.push_back(static_cast<std::byte>(value >> (8 * i)));
  };
  for (const auto& [cluster, clusters] : runs) {
    pairs.push_back(cluster < 0 ? std::byte{0x08} : std::byte{0x88});
    put(clusters);
    if (cluster < 0) continue;
    put(static_cast<uint64_t>(cluster - before));
    before = cluster;
  }
  pairs.push_back(std::byte{0});
  return pairs;
}

Bytes IndexRootValue(const std::vector<std::pair<uint64_t, std::u16string_view>>& entries) {
  Bytes value(32);
  PutEntries(value, 16, entries, 16);
  return value;
}

Bytes IndexBlock(const std::vector<std::pair<uint64_t, std::u16string_view>>& entries) {
  Bytes block(kBuiltClusterBytes);
  std::memcpy(block.data(), "INDX", 4);
  PutEntries(block, 24, entries, 40);
  PutFixups(block, 40);
  return block;
}

NtfsVolumeBuilder& NtfsVolumeBuilder::File(uint64_t number, uint64_t parent, std::u16string_view name,
                                           int64_t usn) {
  return Record(number,
                RecordBuilder().StandardInformation(0x20, usn).FileName(parent, name).Finish({}));
}

NtfsVolumeBuilder& NtfsVolumeBuilder::Folder(uint64_t number, uint64_t parent,
                                             std::u16string_view name) {
  return Record(
      number,
      RecordBuilder().StandardInformation().FileName(parent, name).Finish({.isDirectory = true}));
}

NtfsVolumeBuilder& NtfsVolumeBuilder::Record(uint64_t number, Bytes record) {
  records_[number] = std::move(record);
  return *this;
}

NtfsVolumeBuilder& NtfsVolumeBuilder::Cluster(uint64_t cluster, Bytes bytes) {
  clusters_[cluster] = std::move(bytes);
  return *this;
}

NtfsVolumeBuilder& NtfsVolumeBuilder::Journal(uint64_t id, uint64_t firstUsn, const Bytes& records) {
  Bytes max(32);
  StoreLe(std::span(max), 0, uint64_t{0x200'0000});
  StoreLe(std::span(max), 8, uint64_t{0x40'0000});
  StoreLe(std::span(max), 16, id);
  const uint64_t holes = firstUsn / kBuiltClusterBytes;
  const uint64_t clusters = (records.size() + kBuiltClusterBytes - 1) / kBuiltClusterBytes;
  std::vector<std::pair<int64_t, uint64_t>> runs;
  if (holes != 0) runs.emplace_back(-1, holes);
  if (clusters != 0) runs.emplace_back(kJournalCluster, clusters);
  Record(kExtendRecord.value,
         RecordBuilder()
             .StandardInformation()
             .FileName(MakeReference(kRootRecord.value, 1), u"$Extend")
             .Resident(kIndexRoot, u"$I30",
                       IndexRootValue({{MakeReference(kJournalRecord, 1), u"$UsnJrnl"}}))
             .Finish({.isDirectory = true}));
  Record(kJournalRecord, RecordBuilder()
                             .StandardInformation()
                             .FileName(MakeReference(kExtendRecord.value, 1), u"$UsnJrnl")
                             .NonResident(kData, u"$J", MappingPairs(runs), firstUsn + records.size())
                             .Resident(kData, u"$Max", max)
                             .Finish({}));
  return Cluster(kJournalCluster, records);
}

MemoryVolume NtfsVolumeBuilder::Build() const {
  auto records = records_;
  const uint64_t count = std::max<uint64_t>(records.empty() ? 0 : records.rbegin()->first + 1, 16);
  const uint64_t bytes = count * kBuiltRecordBytes;
  const uint64_t clusters = (bytes + kBuiltClusterBytes - 1) / kBuiltClusterBytes;
  const uint64_t root = MakeReference(kRootRecord.value, 1);
  if (!records.contains(kMftRecord.value)) {
    records[kMftRecord.value] =
        RecordBuilder()
            .StandardInformation()
            .FileName(root, u"$MFT")
            .NonResident(kData, {}, MappingPairs({{kBuiltMftCluster, clusters}}), bytes)
            .Finish({});
  }
  if (!records.contains(kRootRecord.value)) {
    records[kRootRecord.value] =
        RecordBuilder().StandardInformation().FileName(root, u".").Finish({.isDirectory = true});
  }
  MemoryVolume volume{.size = (kVolumeClusters + 1) * kBuiltClusterBytes};
  volume.stretches[0] =
      MakeBootSector(kBuiltClusterBytes, kBuiltRecordBytes, kVolumeClusters, kBuiltMftCluster, 2);
  Bytes& mft = volume.stretches[kBuiltMftCluster * kBuiltClusterBytes];
  mft.resize(static_cast<size_t>(clusters * kBuiltClusterBytes));
  for (const auto& [number, record] : records) {
    std::copy(record.begin(), record.end(),
              mft.begin() + static_cast<ptrdiff_t>(number * kBuiltRecordBytes));
  }
  for (const auto& [cluster, contents] : clusters_) {
    volume.stretches[cluster * kBuiltClusterBytes] = contents;
  }
  return volume;
}

std::string NtfsVolumeBuilder::Image() const {
  const MemoryVolume volume = Build();
  std::string image(volume.size, '\0');
  for (const auto& [place, bytes] : volume.stretches) {
    if (!bytes.empty()) std::memcpy(image.data() + place, bytes.data(), bytes.size());
  }
  return image;
}

}  // namespace quilmark
