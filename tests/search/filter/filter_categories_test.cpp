#include "search/filter/filter_categories.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "config/config_directory.h"
#include "config/scratch_config.h"
#include "platform/files.h"
#include "platform/text_file.h"
#include "support/system_faults.h"

namespace quilmark {
namespace {

using Extensions = std::vector<std::u16string>;

class FilterFiles : public testing::Test {
 protected:
  ~FilterFiles() override { InstallCategories(DefaultCategories(false)); }
  std::u16string PathOf(std::u16string_view name) {
    return GetConfigDirectory() + u"\\" + std::u16string(name);
  }
  void Write(std::u16string_view name, std::u16string_view text) {
    ASSERT_TRUE(WriteTextFile(PathOf(name), text));
  }
  std::u16string Read(std::u16string_view name) {
    return ReadTextFile(PathOf(name)).value_or(u"(none)");
  }

  ScratchConfig config;
};

TEST(FilterCategories, AreReadWithForgiveness) {
  const FilterTable table = ReadCategories(
      u"# remark\n\n All = \nDocs=doc, .PDF ,,\nno line\n=x\n  # also a remark = x\nLast=.a=b");
  ASSERT_EQ(table.size(), 3u);
  EXPECT_EQ(table[0], (FilterCategory{u"All", {}}));
  EXPECT_EQ(table[1], (FilterCategory{u"Docs", {u".doc", u".pdf"}}));
  EXPECT_EQ(table[2], (FilterCategory{u"Last", {u".a=b"}}));
}

TEST(FilterCategories, TakeALineOfAnyLength) {
  std::u16string line = u"Long=";
  for (int i = 0; i < 25'000; ++i) line += u".ab,";
  EXPECT_EQ(ReadCategories(line)[0].extensions.size(), 25'000u);
}

TEST(FilterCategories, ComeBackAsTheyWereWritten) {
  const FilterTable table = DefaultCategories(true);
  EXPECT_EQ(ReadCategories(CategoriesText(table)), table);
  EXPECT_TRUE(CategoriesText(DefaultCategories(false))
                  .starts_with(u"All Files=\nFolders=.dir\nDocuments=.doc,.docx,"));
}

TEST(FilterCategories, KnowRowsOfFolders) {
  EXPECT_TRUE(IsFolderCategory({u"a", {u".txt", u".folder"}}));
  EXPECT_TRUE(IsFolderCategory({u"a", {u".dir"}}));
  EXPECT_FALSE(IsFolderCategory({u"a", {u".txt"}}));
}

TEST_F(FilterFiles, TakeALineOfAnyLength) {
  std::u16string line = u"All=\nF=.dir\nLong=";
  for (int i = 0; i < 25'000; ++i) line += u".ab,";
  Write(u"filters.ini", line + u"\nLast=.x\n");
  LoadFilterCategories(u"", false);
  ASSERT_EQ(CurrentCategories()->size(), 4u);
  EXPECT_EQ((*CurrentCategories())[2].extensions.size(), 25'000u);
  EXPECT_EQ(CurrentCategories()->back().label, u"Last");
}

TEST_F(FilterFiles, AreMadeWhereThereAreNone) {
  LoadFilterCategories(u"en-us", false);
  EXPECT_EQ(*CurrentCategories(), DefaultCategories(false));
  EXPECT_EQ(ReadCategories(Read(u"filters.en-us.ini")), DefaultCategories(false));
  EXPECT_EQ(Read(u"filters.ini"), u"(none)");
}

TEST_F(FilterFiles, WithoutALanguageAreMadeInTheCommonOne) {
  LoadFilterCategories(u"", false);
  EXPECT_EQ(ReadCategories(Read(u"filters.ini")), DefaultCategories(false));
}

TEST_F(FilterFiles, OfTheLanguageComeFirst) {
  Write(u"filters.en-us.ini", u"Mine=\nF=.dir\nX=.x\n");
  Write(u"filters.ini", u"Other=\nF=.dir\n");
  LoadFilterCategories(u"EN-US", false);
  EXPECT_EQ(CurrentCategories()->front().label, u"Mine");
  EXPECT_EQ(Read(u"filters.bak"), Read(u"filters.en-us.ini"));
}

TEST_F(FilterFiles, FallBackOnTheCommonOne) {
  Write(u"filters.en-us.ini", u"");
  Write(u"filters.ini", u"Common=\nF=.dir\n");
  LoadFilterCategories(u"en-us", false);
  EXPECT_EQ(CurrentCategories()->front().label, u"Common");
  EXPECT_EQ(Read(u"filters.bak"), Read(u"filters.ini"));
}

TEST_F(FilterFiles, RecoverTheCopy) {
  ASSERT_TRUE(MakeFolder(PathOf(u"filters.ini")));  // cannot be read
  Write(u"filters.bak", u"Saved=\nF=.dir\n");
  LoadFilterCategories(u"en-us", false);
  EXPECT_EQ(CurrentCategories()->front().label, u"Saved");
  EXPECT_EQ(Read(u"filters.en-us.ini"), u"Saved=\nF=.dir\n");
}

TEST_F(FilterFiles, GetARowForFolders) {
  Write(u"filters.ini", u"All=\nText=.txt\n");
  LoadFilterCategories(u"", false);
  EXPECT_EQ((*CurrentCategories())[1], (FilterCategory{u"Folders", {u".dir"}}));
  EXPECT_EQ(Read(u"filters.ini"), u"All=\nFolders=.dir\nText=.txt\n");
  EXPECT_EQ(Read(u"filters.bak"), Read(u"filters.ini"));
}

TEST_F(FilterFiles, GetARowForFoldersWhicheverIsTaken) {
  const std::u16string bare = u"All=\nText=.txt\n", whole = u"All=\nFolders=.dir\nText=.txt\n";
  Write(u"filters.en-us.ini", bare);
  LoadFilterCategories(u"en-us", false);
  EXPECT_EQ(Read(u"filters.en-us.ini"), whole);
  EXPECT_EQ(Read(u"filters.bak"), whole);

  RemoveFile(PathOf(u"filters.en-us.ini"));
  Write(u"filters.bak", bare);
  LoadFilterCategories(u"en-us", false);
  EXPECT_EQ((*CurrentCategories())[1], (FilterCategory{u"Folders", {u".dir"}}));
  EXPECT_EQ(Read(u"filters.en-us.ini"), whole);
  EXPECT_EQ(Read(u"filters.bak"), bare);
}

// A file of the chain as it is found.
enum class Found { kMissing, kEmpty, kUnreadable, kOtherLanguage, kGood };
constexpr Found kAllFound[] = {Found::kMissing, Found::kEmpty, Found::kUnreadable, Found::kOtherLanguage,
                               Found::kGood};

// The three files of the chain, in each state, against the rules told one after the other.
class FilterChain : public FilterFiles {
 protected:
  void Place(std::u16string_view name, Found found) {
    std::filesystem::remove(PathInFolder(name));
    if (found == Found::kUnreadable) {
      ASSERT_TRUE(MakeFolder(PathOf(name)));
    } else if (found != Found::kMissing) {
      Write(name, TextOf(name, found));
    }
  }
  std::filesystem::path PathInFolder(std::u16string_view name) {
    return config.folder.HostPath() / std::u16string(name);
  }
  static std::u16string TextOf(std::u16string_view name, Found found) {
    if (found == Found::kOtherLanguage) return CategoriesText(DefaultCategories(true));
    return found == Found::kGood ? std::u16string(name) + u"=\nF=.dir\n" : std::u16string();
  }
  static bool IsRead(Found found) { return found == Found::kOtherLanguage || found == Found::kGood; }
};

TEST_F(FilterChain, TakesTheFirstFileThatIsOne) {
  const std::u16string names[] = {u"filters.en-us.ini", u"filters.ini", u"filters.bak"};
  const std::u16string defaults = CategoriesText(DefaultCategories(false)), none = u"(none)";
  for (int round = 0; round < 125; ++round) {
    const Found found[] = {kAllFound[round % 5], kAllFound[round / 5 % 5], kAllFound[round / 25]};
    std::u16string expected[3];  // what the files hold afterwards
    for (size_t i = 0; i < 3; ++i) {
      Place(names[i], found[i]);
      const bool hasText = found[i] != Found::kMissing && found[i] != Found::kUnreadable;
      expected[i] = hasText ? TextOf(names[i], found[i]) : none;
    }
    std::u16string taken = defaults;
    const size_t first = IsRead(found[0]) ? 0 : IsRead(found[1]) ? 1 : 2;
    if (first < 2) {
      if (found[first] == Found::kGood) taken = expected[first];
      expected[first] = taken;
      if (found[2] != Found::kUnreadable) expected[2] = taken;
    } else {
      if (IsRead(found[2])) taken = expected[2];
      if (found[0] != Found::kUnreadable) expected[0] = taken;
    }

    LoadFilterCategories(u"en-us", false);

    EXPECT_EQ(CategoriesText(*CurrentCategories()), taken) << round;
    for (size_t i = 0; i < 3; ++i) EXPECT_EQ(Read(names[i]), expected[i]) << round << " " << i;
  }
}

TEST_F(FilterFiles, OfTheBackupDoNotComeBeforeATableThatCannotBeReadForTheMoment) {
  Write(u"filters.bak", u"Former=\nF=.dir\n");
  Write(u"filters.ini", u"Current=\nF=.dir\n");
  // As good as held by somebody else: it is there, and too long to be read.
  const std::filesystem::path main = config.folder.HostPath() / "filters.ini";
  const auto size = std::filesystem::file_size(main);
  std::filesystem::resize_file(main, 65u << 20);
  LoadFilterCategories(u"en-us", false);
  EXPECT_EQ(CurrentCategories()->front().label, u"Former");
  EXPECT_EQ(Read(u"filters.en-us.ini"), u"(none)");

  std::filesystem::resize_file(main, size);
  LoadFilterCategories(u"en-us", false);
  EXPECT_EQ(CurrentCategories()->front().label, u"Current");
}

TEST_F(FilterFiles, ThatAreBackedUpAlreadyAreNotWrittenAtAStart) {
  Write(u"filters.ini", u"Mine=\nF=.dir\n");
  LoadFilterCategories(u"", false);
  ASSERT_EQ(Read(u"filters.bak"), u"Mine=\nF=.dir\n");
  const SystemFaults calls(FaultKind::kOnce);
  LoadFilterCategories(u"", false);
  for (const std::string& call : calls.Calls()) {
    EXPECT_TRUE(call != "fsync" && call != "FlushFileBuffers") << call;
  }
}

TEST_F(FilterFiles, OfAnotherLanguageAreReplaced) {
  Write(u"filters.ini", CategoriesText(DefaultCategories(true)));
  LoadFilterCategories(u"", false);
  EXPECT_EQ(*CurrentCategories(), DefaultCategories(false));
  EXPECT_EQ(Read(u"filters.bak"), CategoriesText(DefaultCategories(false)));
  Write(u"filters.ini", CategoriesText(DefaultCategories(true)));
  LoadFilterCategories(u"", true);
  EXPECT_EQ(*CurrentCategories(), DefaultCategories(true));
}

TEST_F(FilterFiles, AreNamedByTheLanguage) {
  LoadFilterCategories(u"My Language", false);
  EXPECT_NE(Read(u"filters.my_language.ini"), u"(none)");
}

TEST_F(FilterFiles, AreReadWithoutBeingWritten) {
  const FilterTable before = *CurrentCategories();
  EXPECT_EQ(ReadFilterCategories(u"en-us", false), DefaultCategories(false));
  EXPECT_EQ(Read(u"filters.en-us.ini"), u"(none)");

  Write(u"filters.bak", u"All=\nC=c\n");
  EXPECT_EQ(ReadFilterCategories(u"en-us", false)[2], (FilterCategory{u"C", {u".c"}}));
  Write(u"filters.ini", u"所有文件=\nB=b\n");
  EXPECT_EQ(ReadFilterCategories(u"en-us", false)[2], (FilterCategory{u"B", {u".b"}}));
  Write(u"filters.en-us.ini", u"All=\nA=a\n");
  EXPECT_EQ(ReadFilterCategories(u"en-us", false)[2], (FilterCategory{u"A", {u".a"}}));

  EXPECT_EQ(Read(u"filters.en-us.ini"), u"All=\nA=a\n");
  EXPECT_EQ(Read(u"filters.ini"), u"所有文件=\nB=b\n");
  EXPECT_EQ(Read(u"filters.bak"), u"All=\nC=c\n");
  EXPECT_EQ(*CurrentCategories(), before);
}

}  // namespace
}  // namespace quilmark
