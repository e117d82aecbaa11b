#include "content/settings/picker_exts.h"

#include <gtest/gtest.h>

#include "config/scratch_config.h"
#include "config/window_settings.h"
#include "content/settings/list_files.h"
#include "platform/files.h"
#include "platform/text_file.h"

namespace quilmark {
namespace {

using Texts = std::vector<std::u16string>;

class PickerExts : public testing::Test {
 protected:
  void SetUp() override { CurrentWindowSettings.contentSearchExts.clear(); }
  void TearDown() override { CurrentWindowSettings.contentSearchExts.clear(); }
  std::optional<std::string> Bytes() {
    return ReadFileBytes(config_.folder.PathOf(u"content_search_exts.ini"));
  }
  void Write(std::string_view bytes) { config_.folder.MakeFile("content_search_exts.ini", bytes); }
  const Texts defaults_ = DefaultItems(PickerExtsFile());
  ScratchConfig config_;
};

TEST_F(PickerExts, AreThoseOfTheFileAlone) {
  Write("exts=.PDF,txt,.Txt\npdf\n.c");
  EXPECT_EQ(LoadPickerExts(), (Texts{u".pdf", u".txt", u".c"}));
  EXPECT_EQ(Bytes(), "exts=.PDF,txt,.Txt\npdf\n.c");
}

TEST_F(PickerExts, AreTheBuiltInOnesWithoutAny) {
  for (const char* text : {"", "#exts=.a", "exts=", "exts=.,,"}) {
    Write(text);
    EXPECT_EQ(LoadPickerExts(), defaults_) << text;
    EXPECT_EQ(Bytes(), TextFileBytes(ListText(PickerExtsFile(), defaults_))) << text;
  }
  ASSERT_TRUE(RemoveFile(config_.folder.PathOf(u"content_search_exts.ini")));
  EXPECT_EQ(LoadPickerExts(), defaults_);
  EXPECT_TRUE(Bytes());
}

TEST_F(PickerExts, AreSaved) {
  SavePickerExts({u".pdf", u".\u4E2D"});
  EXPECT_EQ(Bytes(), TextFileBytes(ListText(PickerExtsFile(), {u".pdf", u".\u4E2D"})));
  EXPECT_EQ(LoadPickerExts(), (Texts{u".pdf", u".\u4E2D"}));
  SavePickerExts({});
  EXPECT_EQ(LoadPickerExts(), defaults_);
}

TEST_F(PickerExts, ThatCannotBeSavedAreIgnored) {
  config_.folder.MakeFolder("content_search_exts.ini");
  SavePickerExts({u".pdf"});
  EXPECT_EQ(LoadPickerExts(), defaults_);
}

TEST_F(PickerExts, AreAllTickedAtFirst) { EXPECT_EQ(SelectedPickerExts(), defaults_); }

TEST_F(PickerExts, AreTickedAsTheyWerePicked) {
  CurrentWindowSettings.contentSearchExts = {u".MD", u".pdf", u".md", u".txt"};
  EXPECT_EQ(SelectedPickerExts(), (Texts{u".MD", u".txt"}));
  CurrentWindowSettings.contentSearchExts = {u".pdf"};
  EXPECT_EQ(SelectedPickerExts(), defaults_);
}

TEST_F(PickerExts, AreParsedAsTyped) {
  EXPECT_EQ(ParseExtList(u" .PDF, docx ,,x"), (Texts{u".pdf", u".docx", u".x"}));
  EXPECT_EQ(ParseExtList(u" , "), Texts{});
}

}  // namespace
}  // namespace quilmark
