#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <random>
#include <string>

#include "platform/files.h"
#include "platform/utf.h"
#include "support/listing.h"
#include "support/mapped_drive.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

namespace fs = std::filesystem;

// Instrumented programs make and remove files some ten times more slowly.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr size_t kManyFiles = 20'000;
#else
constexpr size_t kManyFiles = 200'000;
#endif

// Makes this thread touch files as a user without rights of its own while it lives.
class WithoutPrivileges {
 public:
  WithoutPrivileges() : former_(static_cast<uid_t>(setfsuid(kNobody))) {}
  ~WithoutPrivileges() { setfsuid(former_); }

 private:
  static constexpr uid_t kNobody = 65'534;
  uid_t former_;
};

void MakeEmptyFile(const fs::path& path) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0644);
  ASSERT_GE(file, 0) << path;
  close(file);
}

TEST(PosixFolderListing, ALinkIsAnEntryAndNoFolder) {
  const ScratchFolder folder;
  folder.MakeFile("target/a.txt");
  fs::create_directory_symlink(folder.HostPath() / "target", folder.HostPath() / "link");
  fs::create_symlink("nowhere", folder.HostPath() / "dangling");
  EXPECT_EQ(EntriesIn(folder.Path()), (EntrySet{{u"target", EntryKind::kFolder},
                                                {u"link", EntryKind::kFile},
                                                {u"dangling", EntryKind::kFile}}));
}

TEST(PosixFolderListing, BelowADriveALinkIsNotEntered) {
  const ScratchFolder folder;
  folder.MakeFile("target/a.txt");
  fs::create_directory_symlink("target", folder.HostPath() / "link");
  const MappedDrive drive(u'Q', folder.Path());
  FolderListing listing;
  EXPECT_FALSE(ListFolder(u"Q:\\link", listing));
  EXPECT_TRUE(ListFolder(u"Q:\\target", listing));
}

TEST(PosixFolderListing, TheRootOfADriveMayBeALink) {
  const EntrySet contents{{u"a.txt", EntryKind::kFile}};
  const ScratchFolder folder;
  folder.MakeFile("target/a.txt");
  fs::create_directory_symlink("target", folder.HostPath() / "link");
  const MappedDrive drive(u'Q', folder.PathOf(u"link"));
  EXPECT_EQ(EntriesIn(u"Q:"), contents);
  EXPECT_EQ(EntriesIn(u"Q:\\"), contents);
  EXPECT_EQ(EntriesIn(folder.PathOf(u"link")), contents);
}

TEST(PosixFolderListing, PipesAndSocketsAreFiles) {
  const ScratchFolder folder;
  ASSERT_EQ(mkfifo((folder.HostPath() / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(EntriesIn(folder.Path()), (EntrySet{{u"pipe", EntryKind::kFile}}));
  FolderListing listing;
  EXPECT_FALSE(ListFolder(folder.PathOf(u"pipe"), listing));
}

TEST(PosixFolderListing, AFolderThatMayNotBeReadFails) {
  const ScratchFolder folder;
  folder.MakeFile("open/a.txt");
  folder.MakeFile("shut/b.txt");
  fs::permissions(folder.HostPath(), fs::perms(0755));
  fs::permissions(folder.HostPath() / "open", fs::perms(0755));
  fs::permissions(folder.HostPath() / "shut", fs::perms(0));
  FolderListing openListing, shutListing;
  bool openIsRead, shutIsRead;
  {
    const WithoutPrivileges scope;
    openIsRead = ListFolder(folder.PathOf(u"open"), openListing);
    shutIsRead = ListFolder(folder.PathOf(u"shut"), shutListing);
  }
  fs::permissions(folder.HostPath() / "shut", fs::perms(0755));
  EXPECT_TRUE(openIsRead);
  EXPECT_EQ(openListing.entries.size(), 1u);
  EXPECT_FALSE(shutIsRead);
  EXPECT_TRUE(shutListing.entries.empty());
}

TEST(PosixFolderListing, NamesThatAreNoUtf8AreReachedAgain) {
  const ScratchFolder folder;
  for (const char* name :
       {"caf\xE9", "\xFF\xFE", "\xC0\xAF", "back\\slash", "\xED\xA0\x80", "Caf\xC3\xA9"}) {
    fs::create_directory(folder.HostPath() / name);
    MakeEmptyFile(folder.HostPath() / name / "inside");
    FolderListing listing;
    ASSERT_TRUE(ListFolder(folder.Path(), listing));
    ASSERT_EQ(listing.entries.size(), 1u);
    EXPECT_EQ(ToHostBytes(listing.NameOf(listing.entries[0])), name);
    EXPECT_EQ(EntriesIn(folder.PathOf(listing.NameOf(listing.entries[0]))),
              (EntrySet{{u"inside", EntryKind::kFile}}))
        << name;
    fs::remove_all(folder.HostPath() / name);
  }
}

TEST(PosixFolderListing, AnOddByteAnywhereInANameCounts) {
  for (const char odd : {'\\', '\x80', '\xFF'}) {
    const ScratchFolder folder;
    EntrySet names;
    for (size_t length = 1; length <= 24; ++length) {
      for (size_t at = 0; at < length; ++at) {
        std::string name(length, ']');  // one above a backslash: the hardest neighbour for a borrow
        name[at] = odd;
        MakeEmptyFile(folder.HostPath() / name);
        names.emplace(FromHostBytes(name), EntryKind::kFile);
      }
    }
    EXPECT_EQ(EntriesIn(folder.Path()), names) << static_cast<int>(odd);
  }
}

TEST(PosixFolderListing, AgreesWithTheStandardLibraryOnRandomNames) {
  const ScratchFolder folder;
  std::mt19937 random(20'250'101);
  constexpr std::string_view kBytes = "aZ9 .]\\[^\x7F\x80\xC3\xA9\xE9\xBE\x98\xF0\x9F\x98\x80\xFF";
  for (int i = 0; i < 2'000; ++i) {
    std::string name = std::to_string(i) + " ";
    const size_t length = random() % 60;
    while (name.size() < length) name += kBytes[random() % kBytes.size()];
    if (random() % 4 == 0) {
      fs::create_directory(folder.HostPath() / name);
    } else {
      MakeEmptyFile(folder.HostPath() / name);
    }
  }
  EntrySet expected;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder.HostPath())) {
    expected.emplace(FromHostBytes(entry.path().filename().native()),
                     entry.is_directory() ? EntryKind::kFolder : EntryKind::kFile);
  }
  ASSERT_EQ(expected.size(), 2'000u);
  EXPECT_EQ(EntriesIn(folder.Path()), expected);
}

TEST(PosixFolderListing, ManyEntriesComeInMoreThanOneBlock) {
  const ScratchFolder folder;
  for (size_t i = 0; i < kManyFiles; ++i)
    MakeEmptyFile(folder.HostPath() / ("file number " + std::to_string(i)));
  FolderListing listing;
  ASSERT_TRUE(ListFolder(folder.Path(), listing));
  EXPECT_EQ(listing.entries.size(), kManyFiles);
  EXPECT_EQ(EntriesOf(listing).size(), kManyFiles);
}

TEST(PosixFolderListing, APathBeyondTheLimitOfACallWorks) {
  const ScratchFolder folder;
  const MappedDrive drive(u'Q', folder.Path());
  std::u16string path = u"Q:";
  for (int level = 0; level < 300; ++level) {
    path += u"\\folder of the level";
    ASSERT_TRUE(MakeFolder(path)) << level;
  }
  ASSERT_GT(path.size(), 5'000u);
  EXPECT_TRUE(WriteFileBytes(path + u"\\a.txt", "deep"));
  EXPECT_EQ(EntriesIn(path), (EntrySet{{u"a.txt", EntryKind::kFile}}));
  EXPECT_EQ(ReadFileBytes(path + u"\\a.txt"), "deep");
  EXPECT_TRUE(AppendFileBytes(path + u"\\a.txt", "er", ""));
  EXPECT_EQ(ReadFileBytes(path + u"\\a.txt"), "deeper");
  EXPECT_TRUE(IsExistingFolder(path));
  EXPECT_FALSE(IsExistingFolder(path + u"\\missing"));
  EXPECT_TRUE(RemoveFile(path + u"\\a.txt"));
  EXPECT_EQ(EntriesIn(path), EntrySet{});
}

TEST(PosixFolderListing, ANameThatNoFileSystemHoldsFails) {
  const ScratchFolder folder;
  FolderListing listing;
  EXPECT_FALSE(ListFolder(folder.PathOf(std::u16string(256, u'n')), listing));
  EXPECT_FALSE(ListFolder(folder.PathOf(std::u16string(5'000, u'n')), listing));
  EXPECT_FALSE(MakeFolder(folder.PathOf(std::u16string(5'000, u'n') + u"\\a")));
}

}  // namespace
}  // namespace quilmark
