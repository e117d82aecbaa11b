// That what looks for broken invariants finds them.
#include <gtest/gtest.h>

#include <memory>
#include <mutex>

#include "index/tables/volume_index.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

// Q:, with a file, one that was renamed and one that is deleted.
struct Invariants : testing::Test {
  std::unique_ptr<VolumeIndex> volume = MakeTestVolume(u"Q:");
  uint32_t file = AddFile(*volume, u"file.txt"), renamed = AddFile(*volume, u"former.txt"),
           deleted = AddFile(*volume, u"deleted.txt");
  const std::unique_lock<OrderedLock> lock{volume->indexLock};

  Invariants() {
    RenameRecord(*volume, renamed, kRootFrnOfTests, u"later.txt");
    MarkDeleted(*volume, deleted);
  }
  std::string Broken() { return FindBrokenInvariant(*volume); }
};

TEST_F(Invariants, HoldAtFirst) { EXPECT_EQ(Broken(), ""); }

TEST_F(Invariants, OneTextARecord) {
  StoreName(volume->names, u"more");
  EXPECT_EQ(Broken(), "the pool has not one text a record");
}

TEST_F(Invariants, TheFoldedCopyIsThatOfTheName) {
  const_cast<char16_t&>(volume->records[file].name[0]) = u'x';
  EXPECT_EQ(Broken(), "record 1: name and folded copy differ");
}

TEST_F(Invariants, ARecordIsFoundByItsReference) {
  volume->records[file].frn += 1'000;
  EXPECT_EQ(Broken(), "record 1: not found by its frn");
}

TEST_F(Invariants, ANameStandsInItsOwnPlaceUnlessItIsApart) {
  volume->records[file].name = volume->records[renamed].name;
  volume->records[file].nameLength = volume->records[renamed].nameLength;
  EXPECT_EQ(Broken(), "record 1: name is not its own text of the pool");
}

TEST_F(Invariants, WhatIsDeletedOrApartIsHidden) {
  SetBit(volume->hidden, file);
  EXPECT_EQ(Broken(), "record 1: hidden bit is wrong");
}

TEST_F(Invariants, ARenamedTextHasItsOwner) {
  volume->renamed[0].owners[0] = file;
  EXPECT_EQ(Broken(), "record 2: name is another record's renamed text");
}

TEST_F(Invariants, ARenamedTextThatIsANameIsNotHidden) {
  SetBit(volume->renamed[0].hidden, 0);
  EXPECT_EQ(Broken(), "record 2: renamed text is hidden wrongly");
}

TEST_F(Invariants, WhatIsDeletedHasNoAttributes) {
  volume->attrs[volume->records[deleted].frn] = {.size = 1, .valid = true};
  EXPECT_EQ(Broken(), "record 3: deleted, yet has attributes");
}

TEST_F(Invariants, CountsAreRight) {
  ++volume->deletedCount;
  EXPECT_EQ(Broken(), "deletedCount is wrong");
  --volume->deletedCount;
  ++volume->apartCount;
  EXPECT_EQ(Broken(), "apartCount is wrong");
}

}  // namespace
}  // namespace quilmark
