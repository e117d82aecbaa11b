// An image made by mkntfs and filled through ntfs-3g: the index equals what the mounted volume shows.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <set>
#include <shared_mutex>

#include "index/build/ntfs_volume.h"
#include "index/posix/ntfs_mount.h"
#include "platform/ntfs/mft_reader.h"
#include "support/mapped_drive.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

namespace fs = std::filesystem;

// An image of mkntfs, mounted.
class MountedImage {
 public:
  explicit MountedImage(uint64_t bytes) {
    { std::ofstream image(ImagePath()); }
    fs::resize_file(ImagePath(), bytes);
    RunTool("/usr/sbin/mkntfs",
            {"-q", "-F", "-Q", "-s", "512", "-c", "4096", "-L", "made", ImagePath().string()});
    mount_.emplace(ImagePath(), folder_.HostPath() / "mount", ",compression");
  }
  void Unmount() { mount_->Unmount(); }
  const NtfsMount& Mount() const { return *mount_; }
  const fs::path& Root() const { return mount_->Root(); }
  fs::path ImagePath() const { return folder_.HostPath() / "volume.img"; }
  std::u16string Image() const { return folder_.PathOf(u"volume.img"); }

 private:
  ScratchFolder folder_;
  std::optional<NtfsMount> mount_;
};

void MakeFile(const fs::path& path, std::string_view bytes = {}) {
  std::ofstream file(path, std::ios::binary);
  file << bytes;
  if (!file) throw std::runtime_error("cannot write " + path.string());
}

std::string Numbered(const std::string& stem, int number) { return stem + std::to_string(number); }

// 20,000 files with names of every kind, in 40 folders.
void FillWithFiles(const fs::path& root) {
  const std::string longName(200, 'l');
  for (int folder = 0; folder < 40; ++folder) {
    const fs::path in = root / Numbered(folder % 2 == 0 ? "Folder " : "文件夹", folder);
    fs::create_directory(in);
    for (int i = 0; i < 500; ++i) {
      const std::string stem = i % 10 == 0   ? longName
                               : i % 10 == 1 ? "报告-文档-"
                               : i % 10 == 2 ? "😀 emoji "
                                             : "file_";
      MakeFile(in / (Numbered(stem, i) + ".txt"));
    }
  }
}

// Deep enough that a path is cut, and deeper than anybody nests.
void MakeDeepFolders(const fs::path& root) {
  const fs::path start = fs::current_path();
  fs::current_path(root);
  for (int i = 0; i < 150; ++i) {
    fs::create_directory(Numbered("d", i));
    fs::current_path(Numbered("d", i));
  }
  MakeFile("deep.txt");
  fs::current_path(start);
}

void MakeOddities(const fs::path& root) {
  MakeFile(root / "linked.txt", "one file under three names");
  fs::create_hard_link(root / "linked.txt", root / "Folder 0" / "second link.txt");
  fs::create_hard_link(root / "linked.txt", root / "third link.txt");
  for (int i = 0; i < 60; ++i)
    fs::create_hard_link(root / "linked.txt", root / (Numbered(std::string(60, 'k'), i)));
  MakeFile(root / "streams.txt", "unnamed");
  MakeFile(root / "streams.txt:second", std::string(100'000, 's'));
  MakeFile(root / "sparse.bin");
  fs::resize_file(root / "sparse.bin", uint64_t{1} << 30);
  fs::create_symlink("streams.txt", root / "symbolic");
}

// Fills the volume to the brim, makes holes, and lets the $MFT grow into them.
void FragmentTheMft(const fs::path& root) {
  const fs::path in = root / "fragments";
  fs::create_directory(in);
  const std::string piece(256 * 1024, 'x');
  int pieces = 0;
  for (; pieces < 4'000; ++pieces) {
    std::ofstream file(in / Numbered("piece", pieces), std::ios::binary);
    if (!(file << piece << std::flush)) break;
  }
  for (int i = 0; i <= pieces; i += 3) fs::remove(in / Numbered("piece", i));
  for (int i = 0; i < 3'000; ++i) MakeFile(in / Numbered("f", i));
  for (int i = 0; i < 3'000; i += 3) fs::remove(in / Numbered("f", i));
  for (int i = 0; i < 300; ++i) MakeFile(in / Numbered("again", i));
}

std::multiset<std::u16string> PathsOfMount(const NtfsMount& mount) {
  std::multiset<std::u16string> paths;
  for (const auto& entry : fs::recursive_directory_iterator(mount.Root())) {
    paths.insert(mount.DrivePathOf(entry.path()));
  }
  return paths;
}

constexpr uint64_t kFirstUserRecord = 16;

std::multiset<std::u16string> PathsOfIndex(const VolumeIndex& volume) {
  const std::shared_lock lock(volume.indexLock);
  std::multiset<std::u16string> paths;
  for (uint32_t i = 0; i < volume.records.size(); ++i) {
    if ((volume.records[i].frn & 0xFFFF'FFFF'FFFF) < kFirstUserRecord) continue;
    const std::u16string path = BuildPath(volume, i);
    if (!path.starts_with(u"N:\\$Extend\\")) paths.insert(path);
  }
  return paths;
}

TEST(NtfsImage, IndexEqualsWhatTheMountedVolumeShows) {
  MountedImage image(160u << 20);
  FillWithFiles(image.Root());
  MakeOddities(image.Root());
  FragmentTheMft(image.Root());
  auto shown = PathsOfMount(image.Mount());
  MakeDeepFolders(image.Root());
  image.Unmount();

  const auto mft = OpenMft(OpenByteSource(image.Image()));
  ASSERT_TRUE(mft.has_value());
  EXPECT_GE(mft->mft.extents.size(), 2u) << "the $MFT lies in pieces";
  const MappedDrive drive(u'N', image.Image());
  VolumeIndex volume;
  ASSERT_TRUE(BuildNtfsVolume(volume, u"N:"));
  CloseVolume(volume);

  auto indexed = PathsOfIndex(volume);
  // The nested folders: 150 of them and a file, those below the hundredth with the innermost names only.
  size_t nested = 0;
  std::erase_if(indexed, [&](const std::u16string& path) {
    const bool isNested = path.starts_with(u"N:\\d");
    nested += isNested ? 1 : 0;
    return isNested;
  });
  EXPECT_EQ(nested, 151u);
  // One name for each file: of its 63 links the index has one.
  std::erase_if(shown, [&](const std::u16string& path) {
    const bool isLink =
        path == u"N:\\linked.txt" || path.ends_with(u"link.txt") || path.starts_with(u"N:\\kkkk");
    return isLink && !indexed.contains(path);
  });
  EXPECT_GE(shown.size(), 20'000u + 40 + 2'300);
  std::vector<std::u16string> missing, extra;
  std::set_difference(shown.begin(), shown.end(), indexed.begin(), indexed.end(),
                      std::back_inserter(missing));
  std::set_difference(indexed.begin(), indexed.end(), shown.begin(), shown.end(),
                      std::back_inserter(extra));
  EXPECT_THAT(missing, testing::IsEmpty());
  EXPECT_THAT(extra, testing::IsEmpty());
  const std::shared_lock lock(volume.indexLock);
  EXPECT_EQ(FindBrokenInvariant(volume), "");
}

}  // namespace
}  // namespace quilmark
