#include "index/tables/record_store.h"

namespace quilmark {

void RecordStore::AddChunk() { chunks_.push_back(MakePages<FileRecord>(kChunkRecords)); }

size_t RecordStore::MemoryBytes() const {
  return chunks_.size() * (kChunkRecords * sizeof(FileRecord) + sizeof(chunks_[0]));
}

}  // namespace quilmark
