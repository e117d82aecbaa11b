#include "shell/search/empty_state.h"

#include <gtest/gtest.h>

#include "support/search_harness.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

TEST(EmptyState, SaysWhatToTypeAndHowMuchIsIndexed) {
  EXPECT_EQ(
      EmptyListText(Emptiness::kNotAsked, 1'234),
      (EmptyText{u"Type a part of a name; Enter lists everything", u"1234 files and folders indexed"}));
  EXPECT_EQ(EmptyListText(Emptiness::kFiltered, 0).title, u"No hit passes the filters");
  EXPECT_EQ(EmptyListText(Emptiness::kNotFound, 0),
            (EmptyText{u"Nothing found", u"0 files and folders indexed"}));
}

TEST(EmptyState, CountsWhatASearchLooksThrough) {
  SearchHarness harness;
  EXPECT_EQ(CountIndexed(Engine()), 0u);
  VolumeIndex* const first = AddVolume(Engine(), MakeTestVolume(u"Q:"));
  AddFile(*first, u"a.txt");
  const uint32_t gone = AddFile(*first, u"b.txt");
  const uint64_t before = CountIndexed(Engine());
  EXPECT_EQ(before, 3u);  // with the root
  MarkDeleted(*first, gone);
  EXPECT_EQ(CountIndexed(Engine()), before - 1);
  VolumeIndex* const second = AddVolume(Engine(), MakeTestVolume(u"R:"));
  EXPECT_EQ(CountIndexed(Engine()), before);
  second->busy = true;
  EXPECT_EQ(CountIndexed(Engine()), before - 1);
  second->busy = false;
}

}  // namespace
}  // namespace quilmark
