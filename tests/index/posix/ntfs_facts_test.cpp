// Sizes and dates out of the records of volumes, against what is known of the volumes from elsewhere.
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <shared_mutex>

#include "index/build/ntfs_volume.h"
#include "index/posix/ntfs_mount.h"
#include "platform/file_reference.h"
#include "platform/ntfs/mft_reader.h"
#include "platform/ntfs/raw_ntfs_device.h"
#include "platform/utf.h"
#include "support/mapped_drive.h"
#include "support/memory_source.h"
#include "support/ntfs_samples.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

namespace fs = std::filesystem;

std::string NameOfTest(const testing::TestParamInfo<std::string>& info) {
  std::string name = info.param;
  std::replace_if(
      name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
  return name;
}

// A record whose truth is beyond doubt, as a file's own and not as a part of one.
bool IsCertainFile(const SampleRow& row) {
  return row.at("state") == "ok" && row.at("in_use") == "1" && row.at("base_record").empty() &&
         row.at("tags").find("disputed") == std::string::npos && !row.at("si_attributes").empty();
}

// Every file has the size of the table, and what is no file has none.
void ExpectSizes(VolumeDevice& device, const fs::path& records) {
  size_t files = 0;
  for (const SampleRow& row : ReadSampleTable(records)) {
    const auto facts = device.ReadFacts(FileReference(ReferenceOf(row, "record", "seq")));
    SCOPED_TRACE("record " + row.at("record"));
    if (!IsCertainFile(row)) {
      const bool isFile =
          row.at("state") == "ok" && row.at("in_use") == "1" && row.at("base_record").empty();
      EXPECT_TRUE(isFile || !facts);
      continue;
    }
    const bool isKnown = row.at("data_form") != "nonresident-headless";
    ASSERT_EQ(facts.has_value(), isKnown);
    if (!facts) continue;
    EXPECT_EQ(facts->isDirectory, row.at("is_dir") == "1");
    EXPECT_EQ(facts->size, facts->isDirectory ? 0 : NumberOf(row, "size"));
    const bool isSystem = NumberOf(row, "record") < 24;  // mkntfs gives these no dates
    EXPECT_TRUE(isSystem || (facts->created != 0 && facts->modified != 0));
    ++files;
  }
  EXPECT_GE(files, 15u);
}

struct SampleMftFacts : testing::TestWithParam<std::string> {};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(SampleMftFacts);
INSTANTIATE_TEST_SUITE_P(Samples, SampleMftFacts, testing::ValuesIn(NtfsSamplesOf("mft")), NameOfTest);

TEST_P(SampleMftFacts, SizesEqualTheTruth) {
  const fs::path sample = NtfsSamplesFolder() / "mft" / GetParam();
  std::vector<std::byte> bootSector;
  if (fs::exists(sample / "vbr.bin")) bootSector = ReadSample(sample / "vbr.bin");
  bootSector.resize(std::min<size_t>(bootSector.size(), 512));
  const MemoryVolume volume = VolumeOfMft(ReadSample(sample / "mft"), bootSector);
  const auto device = OpenRawNtfs(volume.Open());
  ASSERT_NE(device, nullptr);
  ExpectSizes(*device, sample / "records.tsv");
}

// What ntfs-3g says of an entry.
struct Shown {
  bool isDirectory = false;
  std::optional<uint64_t> size;  // of a plain file
  FileTime created = 0, modified = 0;
};

Shown ShownAt(const fs::path& path) {
  struct stat status = {};
  std::array<uint64_t, 4> times = {};
  const auto bytes = lgetxattr(path.c_str(), "system.ntfs_times", times.data(), sizeof times);
  if (lstat(path.c_str(), &status) != 0 || bytes != sizeof times)
    throw std::runtime_error("no facts of " + path.string());
  Shown shown{.isDirectory = S_ISDIR(status.st_mode), .created = times[0], .modified = times[1]};
  if (S_ISREG(status.st_mode)) shown.size = static_cast<uint64_t>(status.st_size);
  return shown;
}

std::map<std::u16string, Shown> ShownIn(const NtfsMount& mount) {
  std::map<std::u16string, Shown> shown;
  for (const auto& entry : fs::recursive_directory_iterator(mount.Root())) {
    shown[mount.DrivePathOf(entry.path())] = ShownAt(entry.path());
  }
  return shown;
}

// Every entry of the index that the mounted volume shows is the same there.
void ExpectEqualsMount(VolumeIndex& volume, const NtfsMount& mount, size_t leastCompared) {
  const auto shown = ShownIn(mount);
  size_t compared = 0;
  const std::shared_lock lock(volume.indexLock);
  for (uint32_t i = 0; i < volume.records.size(); ++i) {
    const auto entry = shown.find(BuildPath(volume, i));
    if (entry == shown.end()) continue;
    SCOPED_TRACE(ToUtf8(entry->first));
    const auto facts = volume.follower.Device()->ReadFacts(FileReference(volume.records[i].frn));
    EXPECT_TRUE(facts.has_value());
    if (!facts) continue;
    EXPECT_EQ(facts->created, entry->second.created);
    EXPECT_EQ(facts->modified, entry->second.modified);
    EXPECT_EQ(facts->size, entry->second.size.value_or(facts->size));
    EXPECT_TRUE(facts->isDirectory || !entry->second.isDirectory);
    ++compared;
  }
  EXPECT_GE(compared, leastCompared);
}

struct SampleVolumeFacts : testing::TestWithParam<std::string> {};
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(SampleVolumeFacts);
INSTANTIATE_TEST_SUITE_P(Samples, SampleVolumeFacts, testing::ValuesIn(NtfsSamplesOf("volumes")),
                         NameOfTest);

TEST_P(SampleVolumeFacts, SizesAndDatesEqualTheTruth) {
  const fs::path sample = NtfsSamplesFolder() / "volumes" / GetParam();
  const ScratchFolder folder;
  const fs::path image = UnpackVolume(sample, folder.HostPath());
  const MappedDrive drive(u'N', folder.PathOf(u"volume.img"));
  VolumeIndex volume;
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));

  ExpectSizes(*volume.follower.Device(), sample / "records.tsv");
  const NtfsMount mount(image, folder.HostPath() / "mount", ",ro");
  ExpectEqualsMount(volume, mount, GetParam() == "linux-ntfs3-attrlist" ? 1 : 2);
}

void Append(const fs::path& path, size_t bytes) {
  std::ofstream(path, std::ios::binary | std::ios::app) << std::string(bytes, 'x');
}

// A hole behind each cluster: more pieces than a record can name.
void MakeFileInPieces(const fs::path& path) {
  std::ofstream file(path, std::ios::binary);
  for (int i = 0; i < 1'000; ++i) file.seekp(i * 2 * 4'096) << 'x' << std::flush;
}

void SetDate(const fs::path& path, int year) {
  const std::chrono::sys_seconds day = std::chrono::sys_days(std::chrono::year(year) / 2 / 29);
  fs::last_write_time(path, fs::file_time_type::clock::from_sys(day));
}

// Files that need more than one record.
size_t CountLists(const std::u16string& image) {
  auto reader = OpenMft(OpenByteSource(image));
  if (!reader) return 0;
  std::vector<std::byte> record(reader->geometry.recordBytes);
  size_t lists = 0;
  for (RecordNumber number(24); reader->HasRecord(number); ++number) {
    const auto header = ReadRecord(*reader, number, record);
    lists += header && !ReadAttributeList(*reader, record).empty() ? 1 : 0;
  }
  return lists;
}

TEST(NtfsFacts, EqualWhatAMountedVolumeShows) {
  const ScratchFolder folder;
  const fs::path image = folder.HostPath() / "volume.img", root = folder.HostPath() / "mount";
  { std::ofstream file(image); }
  fs::resize_file(image, 16u << 20);
  RunTool("/usr/sbin/mkntfs", {"-q", "-F", "-Q", "-s", "512", "-c", "4096", image.string()});
  {
    NtfsMount mount(image, root, "");
    for (const size_t size : {0u, 1u, 600u, 4'095u, 4'096u, 4'097u, 1'000'000u}) {
      Append(root / std::to_string(size), size);
    }
    Append(root / "sparse", 10);
    fs::resize_file(root / "sparse", uint64_t{5} << 30);
    Append(root / "streams", 3);
    Append(root / "streams:other", 50'000);
    for (int i = 0; i < 100; ++i) {
      fs::create_hard_link(root / "600", root / (std::string(60, 'l') + std::to_string(i)));
    }
    fs::create_directory(root / "old folder");
    MakeFileInPieces(root / "odd.bin");
    for (const char* const name : {"600", "1000000", "odd.bin", "old folder"})
      SetDate(root / name, 2'004);
    SetDate(root / "streams", 1'972);
    mount.Unmount();
  }
  const MappedDrive drive(u'N', folder.PathOf(u"volume.img"));
  VolumeIndex volume;
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));

  const NtfsMount mount(image, root, ",ro");
  ExpectEqualsMount(volume, mount, 11);
  EXPECT_GE(CountLists(folder.PathOf(u"volume.img")), 2u)
      << "the links, and the file in pieces, need more than a record";
}

}  // namespace
}  // namespace quilmark
