#include "support/volumes.h"

namespace quilmark {

namespace {

uint32_t AddEntry(VolumeIndex& volume, const NewRecord& record, std::u16string_view name) {
  const uint32_t index = AppendRecord(volume, record, name);
  SetIndexOf(volume.frnToIndex, volume.records, record.frn, index);
  return index;
}

uint64_t NextFrn(const VolumeIndex& volume, uint64_t frn) {
  return frn != 0 ? frn : 100 + volume.records.size();
}

}  // namespace

std::unique_ptr<VolumeIndex> MakeTestVolume(std::u16string_view drive) {
  auto volume = std::make_unique<VolumeIndex>();
  volume->drive = drive;
  volume->fileSystem = u"NTFS";
  AddEntry(*volume, {.frn = kRootFrnOfTests, .parentFrn = kRootFrnOfTests, .isDirectory = true}, u".");
  return volume;
}

uint32_t AddFile(VolumeIndex& volume, std::u16string_view name, uint64_t parentFrn, uint64_t frn) {
  return AddEntry(volume, {.frn = NextFrn(volume, frn), .parentFrn = parentFrn}, name);
}

uint32_t AddFolder(VolumeIndex& volume, std::u16string_view name, uint64_t parentFrn, uint64_t frn) {
  return AddEntry(volume, {.frn = NextFrn(volume, frn), .parentFrn = parentFrn, .isDirectory = true},
                  name);
}

std::u16string RandomName(std::mt19937& random, size_t longest) {
  static constexpr std::u16string_view kUnits = u"aaabbbAB..  01\u0416\u0436\u65b0\u6587";
  std::u16string name;
  const size_t size = random() % (longest + 1);
  while (name.size() < size) {
    if (random() % 50 == 0 && name.size() + 2 <= size) {
      name += u"\U0001F600";
    } else {
      name.push_back(kUnits[random() % kUnits.size()]);
    }
  }
  return name;
}

}  // namespace quilmark
