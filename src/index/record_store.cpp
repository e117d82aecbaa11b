#include "index/record_store.h"

namespace quilmark {

void RecordStore::AddBlock() { blocks_.push_back(MakePages<FileRecord>(kBlockRecords)); }

size_t RecordStore::MemoryBytes() const {
  return blocks_.size() * (kBlockRecords * sizeof(FileRecord) + sizeof(blocks_[0]));
}

}  // namespace quilmark
