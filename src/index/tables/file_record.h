// One file or folder of a volume, as small as it can be: a volume holds millions of them.
#pragma once

#include <cstdint>
#include <string_view>

namespace quilmark {

// The name stands elsewhere, as that of nearly every record does.
inline constexpr uint32_t kNoRenamedText = (1u << 29) - 1;

struct FileRecord {
  uint64_t frn = 0;                // record number in the low 48 bits, sequence number in the high 16
  uint64_t parentFrn = 0;          // the same of the containing folder
  const char16_t* name = nullptr;  // on-disk spelling in a NamePool, NUL-terminated
  uint16_t nameLength = 0;         // UTF-16 units, without the NUL
  uint32_t isDirectory : 1 = 0;
  uint32_t deleted : 1 = 0;       // no longer exists; stays in place so that every index stays good
  uint32_t renamedTable : 1 = 0;  // which of VolumeIndex::renamed holds the name
  uint32_t renamedText : 29 = kNoRenamedText;  // number of its name in that table's pool
};
static_assert(sizeof(FileRecord) == 32, "two records a cache line");

// The name as it is on disk. The view is good as long as indexLock is held.
inline std::u16string_view NameOf(const FileRecord& record) { return {record.name, record.nameLength}; }

// The folded copy of the name, which stands right behind it and its NUL; good as long as NameOf's.
inline std::u16string_view FoldedNameOf(const FileRecord& record) {
  return {record.name + record.nameLength + 1, record.nameLength};
}

}  // namespace quilmark
