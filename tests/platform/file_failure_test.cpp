// The functions of files.h and its neighbours, with each call to the system failing in turn.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "platform/byte_source.h"
#include "platform/drives.h"
#include "platform/file_facts.h"
#include "platform/files.h"
#include "support/mapped_drive.h"
#include "support/scratch_folder.h"
#include "support/system_faults.h"

namespace quilmark {
namespace {

// Each byte of `now` stands where it stood in one of the two.
bool IsMixture(const std::string& now, const std::string& a, const std::string& b) {
  for (size_t i = 0; i < now.size(); ++i) {
    const bool isOfA = i < a.size() && now[i] == a[i];
    const bool isOfB = i < b.size() && now[i] == b[i];
    if (!isOfA && !isOfB) return false;
  }
  return true;
}

struct FileFailures : testing::TestWithParam<FaultKind> {
  std::string BytesNow() { return ReadFileBytes(path).value_or("(none)"); }

  ScratchFolder folder;
  std::u16string path = folder.PathOf(u"a.txt");
};
INSTANTIATE_TEST_SUITE_P(Each, FileFailures, testing::ValuesIn(kAllFaultKinds));

TEST_P(FileFailures, AFileIsReadWholeOrNotAtAll) {
  const std::string bytes(100'000, 'b');
  folder.MakeFile("a.txt", bytes);
  FailEachCall(GetParam(), [&](const auto& failing) {
    std::optional<std::string> read;
    const bool hasFailed = failing([&] { read = ReadFileBytes(path); });
    EXPECT_EQ(read.has_value(), !hasFailed);
    EXPECT_TRUE(!read || *read == bytes);
  });
}

TEST_P(FileFailures, ARewriteLeavesTheFormerBytesTheNewOnesOrBoth) {
  const std::string texts[] = {"", "short", "somewhat longer", std::string(5'000, 'x')};
  for (const std::string& former : texts) {
    for (const std::string& bytes : texts) {
      SCOPED_TRACE(std::to_string(former.size()) + " bytes to " + std::to_string(bytes.size()));
      FailEachCall(GetParam(), [&](const auto& failing) {
        folder.MakeFile("a.txt", former);
        bool isWritten = false;
        const bool hasFailed = failing([&] { isWritten = WriteFileBytes(path, bytes); });
        EXPECT_EQ(isWritten, !hasFailed);
        const std::string now = BytesNow();
        EXPECT_TRUE(isWritten ? now == bytes : IsMixture(now, former, bytes)) << now;
        EXPECT_GE(now.size(), std::min(former.size(), bytes.size()));
      });
    }
  }
}

TEST(SystemFaults, ReachEachCallOfAReader) {
  const ScratchFolder folder;
  folder.MakeFile("a.txt", "x");
  const int failed = FailEachCall(FaultKind::kOnce, [&](const auto& failing) {
    failing([&] {
      const auto bytes = ReadFileBytes(folder.PathOf(u"a.txt"));
      EXPECT_TRUE(!bytes || *bytes == "x");
    });
  });
  EXPECT_EQ(failed, 4) << "the file is opened, asked for its size, read, and found to end there";
}

TEST(FileRewrites, ADiskThatIsFullLeavesTheFormerBytes) {
  const ScratchFolder folder;
  folder.MakeFile("a.txt", "former");
  {
    const SystemFaults faults(FaultKind::kFull, 1);
    EXPECT_FALSE(WriteFileBytes(folder.PathOf(u"a.txt"), "a longer text"));
  }
  EXPECT_EQ(ReadFileBytes(folder.PathOf(u"a.txt")), "former");
}

TEST(FileRewrites, ADiskThatIsFullLeavesAMarkedFileAsItWas) {
  const ScratchFolder folder;
  folder.MakeFile("a.txt", "MARK former");
  {
    const SystemFaults faults(FaultKind::kFull, 1);
    EXPECT_FALSE(WriteMarkedFileBytes(folder.PathOf(u"a.txt"), "MARK more than before", 4));
  }
  EXPECT_EQ(ReadFileBytes(folder.PathOf(u"a.txt")), "MARK former");
}

TEST_P(FileFailures, AMarkedFileIsWholeWhereItsMarkIs) {
  const std::string former = "MARK former entries, some of them", bytes = "MARK new entries";
  for (const std::string& before : {former, bytes}) {
    const std::string& after = before == former ? bytes : former;
    FailEachCall(GetParam(), [&](const auto& failing) {
      folder.MakeFile("a.txt", before);
      bool isWritten = false;
      const bool hasFailed = failing([&] { isWritten = WriteMarkedFileBytes(path, after, 4); });
      EXPECT_EQ(isWritten, !hasFailed);
      const std::string now = BytesNow();
      EXPECT_TRUE(!isWritten || now == after) << now;
      // Behind its entries a reader looks no further.
      EXPECT_TRUE(!now.starts_with("MARK") || now.starts_with(before) || now == after) << now;
    });
  }
}

TEST_P(FileFailures, AppendingKeepsWhatWasThere) {
  for (const std::string& former : {std::string(), std::string("first line\n")}) {
    const std::string whole = former.empty() ? "mark, a line\n" : former + "a line\n";
    FailEachCall(GetParam(), [&](const auto& failing) {
      folder.MakeFile("a.txt", former);
      bool isWritten = false;
      const bool hasFailed = failing([&] { isWritten = AppendFileBytes(path, "a line\n", "mark, "); });
      EXPECT_EQ(isWritten, !hasFailed);
      const std::string now = BytesNow();
      EXPECT_TRUE(isWritten ? now == whole : whole.starts_with(now) && now.starts_with(former)) << now;
    });
  }
}

TEST_P(FileFailures, AFileThatCannotBeAskedForIsNeitherThereNorMissing) {
  folder.MakeFile("a.txt", "x");
  FailEachCall(GetParam(), [&](const auto& failing) {
    bool isThere = false;
    const bool hasFailed = failing([&] { isThere = IsExistingPath(path); });
    EXPECT_EQ(isThere, !hasFailed);
  });
  FailEachCall(GetParam(), [&](const auto& failing) {
    bool isMissing = true;
    failing([&] { isMissing = IsMissingPath(path); });
    EXPECT_FALSE(isMissing);
  });
  FailEachCall(GetParam(), [&](const auto& failing) {
    bool isMissing = true;
    const std::u16string other = folder.PathOf(u"none");
    const bool hasFailed = failing([&] { isMissing = IsMissingPath(other); });
    EXPECT_EQ(isMissing, !hasFailed);
  });
  FailEachCall(GetParam(), [&](const auto& failing) {
    bool isFolder = false;
    const bool hasFailed = failing([&] { isFolder = IsExistingFolder(folder.Path()); });
    EXPECT_EQ(isFolder, !hasFailed);
  });
}

TEST_P(FileFailures, AFolderIsMadeOrSaidNotToBe) {
  FailEachCall(GetParam(), [&](const auto& failing) {
    const ScratchFolder fresh;
    bool isMade = false;
    const bool hasFailed = failing([&] { isMade = MakeFolder(fresh.PathOf(u"sub")); });
    EXPECT_EQ(isMade, !hasFailed);
    EXPECT_EQ(IsExistingFolder(fresh.PathOf(u"sub")), isMade);
  });
}

TEST_P(FileFailures, AFileIsRemovedOrSaidNotToBe) {
  FailEachCall(GetParam(), [&](const auto& failing) {
    folder.MakeFile("a.txt", "x");
    bool isRemoved = false;
    const bool hasFailed = failing([&] { isRemoved = RemoveFile(path); });
    EXPECT_EQ(isRemoved, !hasFailed);
    EXPECT_EQ(IsMissingPath(path), isRemoved);
  });
}

TEST_P(FileFailures, AFolderKeepsWhatWasReadOfIt) {
  constexpr size_t kNames = 20;
  for (size_t i = 0; i < kNames; ++i) folder.MakeFile(std::string("file ") + std::to_string(i));
  FailEachCall(GetParam(), [&](const auto& failing) {
    FolderListing listing;
    bool isWhole = false;
    const bool hasFailed = failing([&] { isWhole = ListFolder(folder.Path(), listing); });
    EXPECT_TRUE(hasFailed || isWhole);
    EXPECT_LE(listing.entries.size(), kNames);
    EXPECT_TRUE(!isWhole || listing.entries.size() == kNames);
    for (const FolderEntry& entry : listing.entries) {
      EXPECT_TRUE(listing.NameOf(entry).starts_with(u"file "));
    }
  });
}

TEST_P(FileFailures, ASourceOfBytesGivesThemOrFewer) {
  const std::string bytes(10'000, 's');
  folder.MakeFile("a.txt", bytes);
  FailEachCall(GetParam(), [&](const auto& failing) {
    std::string read(bytes.size(), '\0');
    size_t count = 0;
    const bool hasFailed = failing([&] {
      const auto source = OpenByteSource(path);
      if (source != nullptr)
        count = source->ReadAt(ByteOffset(0), std::as_writable_bytes(std::span(read)));
    });
    EXPECT_TRUE(hasFailed || count == bytes.size());
    EXPECT_EQ(std::memcmp(read.data(), bytes.data(), count), 0);
  });
}

TEST_P(FileFailures, FactsAreThereOrNot) {
  folder.MakeFile("a.txt", "four");
  FailEachCall(GetParam(), [&](const auto& failing) {
    std::optional<FileFacts> facts;
    const bool hasFailed = failing([&] { facts = ReadFileFacts(path); });
    EXPECT_TRUE(facts || hasFailed);
    EXPECT_TRUE(!facts || facts->size == 4);
  });
}

TEST_P(FileFailures, AMappedDriveTellsWhatItIsOrNothing) {
  const MappedDrive drive(u'Q', folder.Path());
  const auto whole = ReadVolumeInfo(u'Q');
  ASSERT_TRUE(whole.has_value());
  FailEachCall(GetParam(), [&](const auto& failing) {
    std::optional<VolumeInfo> info;
    failing([&] { info = ReadVolumeInfo(u'Q'); });
    EXPECT_TRUE(!info || info->fileSystem == whole->fileSystem);
  });
}

}  // namespace
}  // namespace quilmark
