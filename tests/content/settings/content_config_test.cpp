#include "content/settings/content_config.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

#include "config/scratch_config.h"
#include "content/settings/list_files.h"
#include "platform/files.h"
#include "platform/text_file.h"
#include "platform/utf.h"
#include "support/system_faults.h"

namespace quilmark {
namespace {

using Texts = std::vector<std::u16string>;

class ContentConfigTest : public testing::Test {
 protected:
  std::optional<std::string> BytesOf(std::u16string_view name) {
    return ReadFileBytes(config_.folder.PathOf(name));
  }
  Texts ZipExts() {
    LoadContentConfig();
    return CurrentContentConfig().zipExts;
  }
  std::vector<std::string> Patterns() {
    LoadContentConfig();
    return CurrentContentConfig().innerPatterns;
  }
  static Texts WithDefaults(Texts exts) {
    for (const std::u16string& ext : DefaultItems(ZipExtsFile())) {
      if (std::find(exts.begin(), exts.end(), ext) == exts.end()) exts.push_back(ext);
    }
    return exts;
  }
  ScratchConfig config_;
};

TEST_F(ContentConfigTest, WritesWhatIsMissing) {
  EXPECT_EQ(ZipExts(), DefaultItems(ZipExtsFile()));
  EXPECT_EQ(BytesOf(u"content_zip_exts.ini"),
            TextFileBytes(ListText(ZipExtsFile(), DefaultItems(ZipExtsFile()))));
  EXPECT_EQ(BytesOf(u"content_zip_inner_patterns.ini"), TextFileBytes(DefaultPatternsText()));
  EXPECT_EQ(BytesOf(u"content_search_exts.ini"), std::nullopt);
  ASSERT_TRUE(RemoveFile(config_.folder.PathOf(u"content_zip_exts.ini")));
  EXPECT_EQ(ZipExts(), DefaultItems(ZipExtsFile()));
  EXPECT_TRUE(BytesOf(u"content_zip_exts.ini"));
}

TEST_F(ContentConfigTest, IsReadBesideTheWindowWithoutAWrite) {
  EXPECT_EQ(ReadContentConfig().zipExts, DefaultItems(ZipExtsFile()));
  EXPECT_FALSE(ReadContentConfig().innerPatterns.empty());
  EXPECT_EQ(BytesOf(u"content_zip_exts.ini"), std::nullopt);
  EXPECT_EQ(BytesOf(u"content_zip_inner_patterns.ini"), std::nullopt);
  config_.folder.MakeFile("content_zip_exts.ini", "exts=.rtf");
  EXPECT_EQ(ReadContentConfig().zipExts, WithDefaults({u".rtf"}));
}

TEST_F(ContentConfigTest, AddsTheBuiltInOnes) {
  config_.folder.MakeFile("content_zip_exts.ini", "exts=.DOC, rtf");
  EXPECT_EQ(ZipExts(), WithDefaults({u".doc", u".rtf"}));
  config_.folder.MakeFile("content_zip_exts.ini", "\xEF\xBB\xBF# none\r\nexts=.pptx\r\n#exts=.pdf\r\n");
  EXPECT_EQ(ZipExts(), WithDefaults({u".pptx"}));
  EXPECT_EQ(BytesOf(u"content_zip_exts.ini"), "\xEF\xBB\xBF# none\r\nexts=.pptx\r\n#exts=.pdf\r\n");
  config_.folder.MakeFile("content_zip_exts.ini", "");
  EXPECT_EQ(ZipExts(), DefaultItems(ZipExtsFile()));
  EXPECT_EQ(BytesOf(u"content_zip_exts.ini"), "");
}

TEST_F(ContentConfigTest, AddsTheBuiltInPatterns) {
  config_.folder.MakeFile("content_zip_inner_patterns.ini", "patterns=Word/Document.xml, mine/*\n*.XML");
  const auto patterns = Patterns();
  ASSERT_EQ(patterns.size(), 18u);
  EXPECT_EQ(patterns[0], "word/document.xml");
  EXPECT_EQ(patterns[1], "mine/*");
  EXPECT_EQ(patterns[2], "*.xml");
  EXPECT_EQ(patterns[3], "word/footnotes.xml");
  EXPECT_EQ(patterns[17], "styles.xml");
}

TEST_F(ContentConfigTest, KeepsTheListsOfFilesThatCannotBeRead) {
  config_.folder.MakeFile("content_zip_exts.ini", ".one");
  config_.folder.MakeFile("content_zip_inner_patterns.ini", "one");
  LoadContentConfig();
  config_.folder.MakeFile("content_zip_exts.ini", ".two");
  config_.folder.MakeFile("content_zip_inner_patterns.ini", "two");
  // A file beyond what is ever read: there, and not to be read.
  const std::string tooLong((64u << 20) + 1, 'x');
  config_.folder.MakeFile("content_zip_exts.ini", tooLong);
  EXPECT_EQ(ZipExts(), WithDefaults({u".one"}));
  EXPECT_EQ(Patterns()[0], "two");
  EXPECT_EQ(BytesOf(u"content_zip_exts.ini"), std::nullopt);
  ASSERT_TRUE(RemoveFile(config_.folder.PathOf(u"content_zip_exts.ini")));
}

TEST_F(ContentConfigTest, DoesWithoutAFileThatCannotBeWritten) {
  config_.folder.MakeFolder("content_zip_exts.ini");
  EXPECT_EQ(ZipExts(), DefaultItems(ZipExtsFile()));
  const SystemFaults faults(FaultKind::kFull, 1);
  EXPECT_EQ(Patterns().size(), 17u);
}

TEST_F(ContentConfigTest, IsWholeWhoeverReadsItMeanwhile) {
  config_.folder.MakeFile("content_zip_exts.ini", ".one");
  LoadContentConfig();
  std::thread loader([] {
    for (int i = 0; i < 50; ++i) LoadContentConfig();
  });
  for (int i = 0; i < 200; ++i) {
    const ContentConfig config = CurrentContentConfig();
    ASSERT_EQ(config.zipExts.size(), 10u);
    ASSERT_EQ(config.innerPatterns.size(), 17u);
  }
  loader.join();
}

}  // namespace
}  // namespace quilmark
