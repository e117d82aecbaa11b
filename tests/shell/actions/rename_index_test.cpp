#include "shell/actions/rename_index.h"

#include <gtest/gtest.h>

#include <functional>

#include "platform/background.h"
#include "search/attributes/attr_jobs.h"
#include "shell/search/row_text.h"
#include "support/gate.h"
#include "support/search_harness.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

constexpr uint64_t kFrn = 900;

// Q: with one file, whose name is being edited.
class RenameOfARow : public testing::Test {
 protected:
  RenameOfARow() { file_ = AddFile(volume_, u"old", kRootFrnOfTests, kFrn); }

  std::u16string Name() { return TextOfRow({&volume_, file_}).name; }

  SearchHarness harness_;
  VolumeIndex& volume_ = *AddVolume(Engine(), MakeTestVolume(u"Q:"));
  uint32_t file_ = 0;
};

TEST_F(RenameOfARow, IsKnownAtOnce) {
  RenameInIndex(SeeForRename({&volume_, file_}).value(), u"new");
  EXPECT_EQ(Name(), u"new");
  EXPECT_TRUE(harness_.IsQuiet());
}

TEST_F(RenameOfARow, GoesOnWhereNamesHaveMoved) {
  const RenameTarget target = SeeForRename({&volume_, file_}).value();
  for (uint32_t i = 0; i < kTextsPerPage; ++i) {
    RenameRecord(volume_, AddFile(volume_, u"a"), kRootFrnOfTests, u"b");
  }
  const char16_t* const before = volume_.records[file_].name;
  TidyNames(volume_);
  ASSERT_NE(volume_.records[file_].name, before);
  RenameInIndex(target, u"new");
  EXPECT_EQ(Name(), u"new");
}

TEST_F(RenameOfARow, IsNotLostWhereNamesAreAboutToMove) {
  for (uint32_t i = 0; i < kTextsPerPage; ++i) {
    RenameRecord(volume_, AddFile(volume_, u"a"), kRootFrnOfTests, u"b");
  }
  const RenameTarget target = SeeForRename({&volume_, file_}).value();
  auto step = PrepareTidying(volume_);
  ASSERT_TRUE(step.has_value());
  RenameInIndex(target, u"new");
  EXPECT_FALSE(FinishTidying(volume_, *step));
  EXPECT_EQ(Name(), u"new");
  TidyNames(volume_);
  EXPECT_EQ(volume_.tidying.moves, 1u);
  EXPECT_EQ(Name(), u"new");
}

TEST_F(RenameOfARow, WaitsForNoSearch) {
  const RenameTarget target = SeeForRename({&volume_, file_}).value();
  Gate search(volume_.indexLock, Gate::Stops::kWriters);
  RenameInIndex(target, u"new");  // comes back
  // Not by a glance, which may be refused where a writer waits.
  EXPECT_EQ(NameOf(volume_.records[file_]), u"old");
  search.Open();
  const PostedMessage message = harness_.Next();
  EXPECT_EQ(message.message, WM_ATTRS_UPDATED);
  EXPECT_EQ(message.first, TheSearch().hydrationGeneration.Number());
  EXPECT_EQ(Name(), u"new");
}

TEST_F(RenameOfARow, IsOfThatFileAlone) {
  const std::function<void()> changes[] = {
      // Built anew: another file has the number, or the same one by another number.
      [&] {
        ResetVolumeTables(volume_);
        AddFile(volume_, u"root");
        AddFile(volume_, u"other", kRootFrnOfTests, 901);
      },
      [&] {
        ResetVolumeTables(volume_);
        AddFile(volume_, u"root");
        AddFile(volume_, u"other", kRootFrnOfTests, kFrn);
      },
      [&] { volume_.records[file_].frn = 905; },
      [&] { RenameRecord(volume_, file_, kRootFrnOfTests, u"another"); },
      [&] { RenameRecord(volume_, file_, 12, u"other"); },
  };
  for (const auto& change : changes) {
    const RenameTarget target = SeeForRename({&volume_, file_}).value();
    change();
    const std::u16string name = Name();
    RenameInIndex(target, u"new");
    EXPECT_EQ(Name(), name);
  }
  const RenameTarget target = SeeForRename({&volume_, file_}).value();
  MarkDeleted(volume_, file_);
  RenameInIndex(target, u"new");
  EXPECT_TRUE(volume_.records[file_].deleted);
  EXPECT_NE(Name(), u"new");
}

TEST_F(RenameOfARow, BeginsWithAFileThatIsThere) {
  EXPECT_FALSE(SeeForRename({}).has_value());
  EXPECT_FALSE(SeeForRename({&volume_, 1'000}).has_value());
  MarkDeleted(volume_, file_);
  EXPECT_FALSE(SeeForRename({&volume_, file_}).has_value());
}

}  // namespace
}  // namespace quilmark
