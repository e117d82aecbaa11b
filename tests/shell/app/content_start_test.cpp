#include "shell/app/content_start.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "config/window_settings.h"
#include "content/settings/picker_exts.h"
#include "platform/background.h"
#include "search/results/search_pipeline.h"
#include "shell/window_harness.h"
#include "support/mapped_drive.h"
#include "support/scratch_folder.h"
#include "support/zip_builder.h"

namespace quilmark {
namespace {

using Names = std::vector<std::u16string>;

// Q: with files that hold "word", on the disk and in the index.
class ContentStart : public testing::Test {
 protected:
  ContentStart() {
    WireContentSearch(TheSearch().hooks);
    Engine().ready = true;
    Add("a.txt", "a word");
    Add("b.md", "a word");
    Add("c.docx", MakeZip({{.name = "word/document.xml", .data = "<w:t>a word</w:t>"}}));
    Add("d.txt", "nothing");
  }
  ~ContentStart() override {
    TheSearch().hooks.whenSearchBegins = nullptr;
    TheSearch().hooks.contentExts = nullptr;
    TheSearch().hooks.searchContent = nullptr;
    CurrentWindowSettings = {};
  }
  void Add(const std::string& name, const std::string& bytes) {
    folder_.MakeFile(name, bytes);
    AddFile(volume_, std::u16string(name.begin(), name.end()));
  }
  Names Found(const std::u16string& text) {
    DoSearchAsync(text, false, false);
    EXPECT_TRUE(WaitForBackgroundJobs(60'000));
    (void)harness_.search.KindsUntilFinal();
    Names names;
    for (const MatchItem& hit : *HeldResults()) names.emplace_back(NameOf(volume_.records[hit.index]));
    std::sort(names.begin(), names.end());
    return names;
  }

  ScratchFolder folder_;
  MappedDrive drive_{u'Q', folder_.Path()};
  WindowHarness harness_;
  VolumeIndex& volume_ = *AddVolume(Engine(), MakeTestVolume(u"Q:"));
};

TEST_F(ContentStart, LooksIntoPlainFilesAndArchives) {
  EXPECT_EQ(Found(u"s:word|txt,md,docx"), (Names{u"a.txt", u"b.md", u"c.docx"}));
  EXPECT_EQ(Found(u"s:word|docx"), Names{u"c.docx"});
}

TEST_F(ContentStart, TakesTheExtensionsThatWerePickedWithoutABar) {
  SavePickerExts({u".txt", u".md"});
  EXPECT_EQ(Found(u"s:word"), (Names{u"a.txt", u"b.md"}));
  CurrentWindowSettings.contentSearchExts = {u".md"};
  EXPECT_EQ(Found(u"s:word"), Names{u"b.md"});
}

TEST_F(ContentStart, TakesTheLimitOfTheMomentAtWhichASearchBegins) {
  Add("large.txt", std::string(1'100'000, ' ') + "word");
  EXPECT_EQ(Found(u"s:word|txt"), (Names{u"a.txt", u"large.txt"}));
  CurrentWindowSettings.contentMaxFileSizeMB = 1;
  EXPECT_EQ(Found(u"s:word|txt"), Names{u"a.txt"});
}

TEST_F(ContentStart, NarrowsByTheFiltersOfTheBar) {
  CurrentWindowSettings.sizePreset = kAbove100MB;
  EXPECT_EQ(Found(u"s:word|txt"), Names{});
}

}  // namespace
}  // namespace quilmark
