// NTFS volumes written by hand, record by record: 4 KiB clusters, 1 KiB records, the $MFT at cluster 4.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/file_reference.h"
#include "platform/ntfs/mft_record.h"
#include "support/memory_source.h"

namespace quilmark {

using Bytes = std::vector<std::byte>;

inline constexpr uint32_t kBuiltClusterBytes = 4'096;
inline constexpr uint32_t kBuiltRecordBytes = 1'024;
inline constexpr uint64_t kBuiltMftCluster = 4;

// One FILE record in the making. Attributes come in the order in which they are added.
class RecordBuilder {
 public:
  RecordBuilder();
  RecordBuilder& Resident(uint32_t type, std::u16string_view name, const Bytes& value);
  // `runs` as they stand on disk, end mark included.
  RecordBuilder& NonResident(uint32_t type, std::u16string_view name, const Bytes& runs, uint64_t size,
                             uint64_t lowestVcn = 0);
  // How many bytes of the attribute added last were written; all of them without this. Non-resident
  // only.
  RecordBuilder& Initialized(uint64_t bytes);
  RecordBuilder& StandardInformation(uint32_t attributes = 0, int64_t usn = 0);
  // When the file was created and last written, into the $STANDARD_INFORMATION that was added last.
  RecordBuilder& Dates(uint64_t created, uint64_t modified);
  RecordBuilder& FileName(uint64_t parent, std::u16string_view name,
                          NameSpace space = NameSpace::kWin32);
  // One entry of an $ATTRIBUTE_LIST, for ListValue.
  struct Listed {
    uint32_t type;
    uint64_t lowestVcn;
    uint64_t holder;
    std::u16string_view name;
  };
  static Bytes ListValue(const std::vector<Listed>& entries);

  struct Header {
    uint16_t sequence = 1;
    bool inUse = true;
    bool isDirectory = false;
    uint64_t baseReference = 0;
  };
  Bytes Finish(const Header& header) const;  // fix-ups in place

 private:
  Bytes bytes_;
  size_t used_;
  size_t last_ = 0;  // of the attribute added last
};

// Runs as mapping pairs: (cluster, clusters), cluster -1 for a hole.
Bytes MappingPairs(const std::vector<std::pair<int64_t, uint64_t>>& runs);

// An INDX block or the value of an $INDEX_ROOT with one entry for each name.
Bytes IndexRootValue(const std::vector<std::pair<uint64_t, std::u16string_view>>& entries);
Bytes IndexBlock(const std::vector<std::pair<uint64_t, std::u16string_view>>& entries);

class NtfsVolumeBuilder {
 public:
  // A file or folder in one plain record.
  NtfsVolumeBuilder& File(uint64_t number, uint64_t parent, std::u16string_view name, int64_t usn = 0);
  NtfsVolumeBuilder& Folder(uint64_t number, uint64_t parent, std::u16string_view name);
  NtfsVolumeBuilder& Record(uint64_t number, Bytes record);
  NtfsVolumeBuilder& Cluster(uint64_t cluster, Bytes bytes);

  // A journal of these bytes, the first of which is USN `firstUsn` (a multiple of the cluster size), at
  // cluster 1,000.
  NtfsVolumeBuilder& Journal(uint64_t id, uint64_t firstUsn, const Bytes& records);

  MemoryVolume Build() const;
  // The volume as the contents of an image file.
  std::string Image() const;

 private:
  std::map<uint64_t, Bytes> records_;
  std::map<uint64_t, Bytes> clusters_;
};

}  // namespace quilmark
