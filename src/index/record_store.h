// Records of one volume in arrival order: appended, never moved, never erased but all at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "index/file_record.h"
#include "platform/pages.h"

namespace quilmark {

// Blocks of 65,536 records (2 MiB): a shift and a mask find a record, and a pointer to one stays good.
class RecordStore {
 public:
  static constexpr uint32_t kBlockBits = 16;
  static constexpr uint32_t kBlockRecords = 1u << kBlockBits;

  uint32_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  const FileRecord& operator[](uint32_t index) const {
    return blocks_[index >> kBlockBits][index & (kBlockRecords - 1)];
  }
  FileRecord& operator[](uint32_t index) {
    return blocks_[index >> kBlockBits][index & (kBlockRecords - 1)];
  }

  // Makes room for one more, so that the next push_back cannot fail.
  void ReserveOne() {
    if (size_ >> kBlockBits == blocks_.size()) AddBlock();
  }
  // The index of the appended record.
  uint32_t push_back(const FileRecord& record) {
    ReserveOne();
    (*this)[size_] = record;
    return size_++;
  }
  void clear() {
    blocks_.clear();
    size_ = 0;
  }
  size_t MemoryBytes() const;

 private:
  void AddBlock();
  std::vector<Pages<FileRecord>> blocks_;
  uint32_t size_ = 0;
};

}  // namespace quilmark
