#include <string>

#include "index/tables/volume_index.h"
#include "platform/text.h"

namespace quilmark {

namespace {

std::string At(uint32_t index, const char* what) {
  return "record " + std::to_string(index) + ": " + what;
}

// The NUL behind the name, the folded copy, and the NUL behind that.
bool HasSoundText(const FileRecord& record) {
  return record.name[record.nameLength] == 0 && FoldText(NameOf(record)) == FoldedNameOf(record) &&
         record.name[2 * record.nameLength + 1] == 0;
}

std::string CheckRecord(const VolumeIndex& volume, uint32_t index, const char16_t* poolText) {
  const FileRecord& record = volume.records[index];
  const bool isApart = TestBit(volume.apart, index);
  if (!HasSoundText(record)) return At(index, "name and folded copy differ");
  if (IndexOf(volume.frnToIndex, volume.records, record.frn) != index)
    return At(index, "not found by its frn");
  if (!isApart && record.name != poolText) return At(index, "name is not its own text of the pool");
  if (record.renamedText != kNoRenamedText &&
      (!isApart || volume.renamed[record.renamedTable].owners.at(record.renamedText) != index)) {
    return At(index, "name is another record's renamed text");
  }
  if (TestBit(volume.hidden, index) != (isApart || record.deleted))
    return At(index, "hidden bit is wrong");
  if (record.deleted && (volume.attrs.contains(record.frn) || volume.mftSizes.contains(record.frn))) {
    return At(index, "deleted, yet has attributes");
  }
  return {};
}

// Each text of one table of `renamed` that is not hidden is the name of its owner, and no other record
// has one there.
std::string CheckRenamed(const VolumeIndex& volume, uint32_t table) {
  const RenamedNames& renamed = volume.renamed[table];
  if (renamed.owners.size() != renamed.pool.textCount) return "a renamed text without an owner";
  for (uint32_t text = 0; text < renamed.pool.textCount; ++text) {
    const uint32_t owner = renamed.owners[text];
    const FileRecord& record = volume.records[owner];
    const bool isItsName = record.renamedTable == table && record.renamedText == text && !record.deleted;
    if (TestBit(renamed.hidden, text) == isItsName) return At(owner, "renamed text is hidden wrongly");
  }
  return {};
}

// The text behind `text`: two NULs further on.
const char16_t* NextText(const char16_t* text) {
  for (int ends = 0; ends < 2; ++text) ends += *text == 0;
  return text;
}

}  // namespace

std::string FindBrokenInvariant(const VolumeIndex& volume) {
  if (volume.names.textCount != volume.records.size()) return "the pool has not one text a record";
  uint64_t deleted = 0, apart = 0;
  size_t chunk = 0;
  const char16_t* text = nullptr;
  for (uint32_t index = 0; index < volume.records.size(); ++index) {
    const auto& chunks = volume.names.chunks;
    if (chunk < chunks.size() && chunks[chunk].firstText == index) text = chunks[chunk++].text.get();
    if (index % kTextsPerMark == 0 && volume.names.marks[index / kTextsPerMark] != text) {
      return At(index, "mark is not at its text");
    }
    if (auto broken = CheckRecord(volume, index, text); !broken.empty()) return broken;
    deleted += volume.records[index].deleted;
    apart += TestBit(volume.apart, index);
    text = NextText(text);
  }
  if (deleted != volume.deletedCount) return "deletedCount is wrong";
  if (apart != volume.apartCount) return "apartCount is wrong";
  auto broken = CheckRenamed(volume, 0);
  return broken.empty() ? CheckRenamed(volume, 1) : broken;
}

}  // namespace quilmark
