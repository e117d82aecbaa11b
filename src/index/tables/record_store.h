// Records of one volume in arrival order: appended, never moved, never erased but all at once.
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

  uint32_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  const FileRecord& operator[](uint32_t index) const {
    return chunks_[index >> kChunkBits][index & (kChunkRecords - 1)];
  }
  FileRecord& operator[](uint32_t index) {
    return chunks_[index >> kChunkBits][index & (kChunkRecords - 1)];
  }

  // Makes room for one more, so that the next push_back cannot fail.
  void ReserveOne() {
    if (size_ >> kChunkBits == chunks_.size()) AddChunk();
  }
  // The index of the appended record.
  uint32_t push_back(const FileRecord& record) {
    ReserveOne();
    (*this)[size_] = record;
    return size_++;
  }
  void clear() {
    chunks_.clear();
    size_ = 0;
  }
  size_t MemoryBytes() const;

 private:
  void AddChunk();
  std::vector<Pages<FileRecord>> chunks_;
  uint32_t size_ = 0;
};

}  // namespace quilmark
