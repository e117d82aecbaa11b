#include "shell/filter_request.h"

#include <gtest/gtest.h>

#include <mutex>

#include "shell/window_harness.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

class FilterRequest : public testing::Test {
 protected:
  FilterRequest() {
    VolumeIndex& volume = *AddVolume(Engine(), MakeTestVolume(u"Q:"));
    auto rows = std::make_shared<ResultSet>();
    for (const char16_t* const name : {u"a.txt", u"b.jpg", u"c.txt"}) {
      rows->push_back({&volume, AddFile(volume, name)});
    }
    const std::scoped_lock lock(ResultsLock);
    CurrentResults = rows;
  }
  void Select(int tag) {
    SelectFilterTag(harness.app, harness.window, tag);
    ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  }

  WindowHarness harness;
  RecordingWindow& window = harness.window;
};

TEST_F(FilterRequest, ATagNarrowsTheListFromItsTop) {
  harness.app.scrollY = 700;
  window.isEnabled = true;
  Select(2);
  EXPECT_EQ(ActiveCategory, 2);
  EXPECT_EQ(ShownResults()->size(), 2u);
  EXPECT_EQ(harness.app.scrollY, 0);
  for (const char* const call : {"RedrawTags", "RelayoutList", "InvalidateList", "FocusSearchBox"}) {
    EXPECT_EQ(window.Count(call), 1u) << call;
  }
  Select(0);
  EXPECT_EQ(ShownResults()->size(), 3u);
}

TEST_F(FilterRequest, ATagThatIsNoneMeansAll) {
  Select(2);
  for (const int tag : {-1, 8, 1'000}) {
    Select(tag);
    EXPECT_EQ(ActiveCategory, 0) << tag;
    EXPECT_EQ(ShownResults()->size(), 3u) << tag;
  }
}

TEST_F(FilterRequest, TheSearchBoxIsLeftAloneBeforeItWorks) {
  window.isEnabled = false;
  Select(2);
  EXPECT_EQ(window.Count("FocusSearchBox"), 0u);
}

TEST_F(FilterRequest, TheBarSaysWhatTheSettingsKeep) {
  ActiveCategory = 3;
  CurrentWindowSettings.sizePreset = kCustomSize;
  CurrentWindowSettings.timePreset = kCustomTime;
  CurrentWindowSettings.sizeUnit = 1;
  CurrentWindowSettings.sizeRange = u"1-2";
  CurrentWindowSettings.timeStart = 20250101;
  CurrentWindowSettings.timeEnd = 20250110;
  const FilterSettings settings = CurrentFilterSettings();
  EXPECT_EQ(settings.category, 3);
  EXPECT_EQ(settings.sizePreset, kCustomSize);
  EXPECT_EQ(settings.timePreset, kCustomTime);
  EXPECT_EQ(settings.sizeUnit, 1);
  EXPECT_EQ(settings.sizeText, u"1-2");
  EXPECT_EQ(settings.dateFrom, 20250101);
  EXPECT_EQ(settings.dateTo, 20250110);
}

TEST_F(FilterRequest, CaptionsHaveNameAndCount) {
  const auto captions = TagCaptions({12, 0, 3});
  ASSERT_EQ(captions.size(), CurrentCategories()->size());
  EXPECT_EQ(captions[0], u"All Files\r\n(12)");
  EXPECT_EQ(captions[2], u"Documents\r\n(3)");
  EXPECT_EQ(captions[3], u"Images\r\n(0)") << "of a row that was not counted";
  EXPECT_EQ(SplitCaption(captions[0]).name, u"All Files");
  EXPECT_EQ(SplitCaption(captions[0]).count, u"(12)");
  EXPECT_EQ(SplitCaption(u"bare").name, u"bare");
  EXPECT_EQ(SplitCaption(u"bare").count, u"");
}

}  // namespace
}  // namespace quilmark
