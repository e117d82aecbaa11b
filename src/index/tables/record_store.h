// Records of one volume in arrival order: appended, never moved, and erased only all at once. Guarded by
// the volume's indexLock.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "index/tables/file_record.h"
#include "platform/pages.h"

namespace quilmark {

// Chunks of 65,536 records (2 MiB): a shift and a mask find a record, and a pointer to one stays good.
class RecordStore {
 public:
  static constexpr uint32_t kChunkBits = 16;
  static constexpr uint32_t kChunkRecords = 1u << kChunkBits;

  // How many records there are; their indices lie below it.
  uint32_t size() const { return size_; }
  // Whether there is no record.
  [[nodiscard]] bool empty() const { return size_ == 0; }
  // The record at `index`. REQUIRES index < size(). The reference is good until clear.
  const FileRecord& operator[](uint32_t index) const {
    return chunks_[index >> kChunkBits][index & (kChunkRecords - 1)];
  }
  FileRecord& operator[](uint32_t index) {
    return chunks_[index >> kChunkBits][index & (kChunkRecords - 1)];
  }

  // Makes room for one more, so that the next push_back cannot fail. std::bad_alloc where memory runs
  // out.
  void ReserveOne() {
    if (size_ >> kChunkBits == chunks_.size()) AddChunk();
  }
  // Appends the record and returns its index. std::bad_alloc where memory runs out; nothing is appended
  // then.
  uint32_t push_back(const FileRecord& record) {
    ReserveOne();
    (*this)[size_] = record;
    return size_++;
  }
  // Erases all records and frees their memory.
  void clear() {
    chunks_.clear();
    size_ = 0;
  }
  // Bytes taken from the system.
  size_t MemoryBytes() const;

 private:
  void AddChunk();
  std::vector<Pages<FileRecord>> chunks_;
  uint32_t size_ = 0;
};

}  // namespace quilmark
