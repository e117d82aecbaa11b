#include "content/run/file_matcher.h"

#include <gtest/gtest.h>

#include "support/scripted_files.h"

namespace quilmark {
namespace {

TEST(ArchivePath, EndsWithAnExtensionOfOfficeOrOfTheList) {
  for (const char16_t* const name : {u"C:\\a.docx", u"C:\\A.DOCX", u"C:\\a.b.xlsm", u"\\srv\\a.odp"}) {
    EXPECT_TRUE(IsArchivePath(name, {}));
  }
  EXPECT_FALSE(IsArchivePath(u"C:\\a.zip", {}));
  EXPECT_TRUE(IsArchivePath(u"C:\\a.ZIP", {u".epub", u".zip"}));
  EXPECT_FALSE(IsArchivePath(u"C:\\a.zip", {u".ZIP"})) << "the list is lower-case";
  EXPECT_FALSE(IsArchivePath(u"C:\\a.doc", {u".epub"}));
  EXPECT_FALSE(IsArchivePath(u"C:\\docx", {}));
  EXPECT_FALSE(IsArchivePath(u"", {u""}));
}

TEST(ArchivePath, TakesTheLastDotOfTheWholePath) {
  EXPECT_FALSE(IsArchivePath(u"C:\\folder.docx\\name", {u".docx"}));
  EXPECT_TRUE(IsArchivePath(u"C:\\folder.docx\\name", {u".docx\\name"}));
}

struct MatcherTest : testing::Test {
  MatcherTest() {
    plan.Groups = MakeContentGroups({{u"word"}});
    plan.makeContent = [this] { return std::make_unique<ScriptedReader>(files); };
    files.bytes[u"C:\\a.DOCX"] = files.bytes[u"C:\\a.txt"] = "a word";
  }
  FileMatch Match(std::u16string_view path) {
    return FileMatcher(plan).Match(path, WorkCheck(Ticket::Unlimited()));
  }
  ScriptedFiles files;
  MatchPlan plan;
};

TEST_F(MatcherTest, ReadsPlainFilesByThemselvesAndGivesArchivesToTheirMatcher) {
  std::vector<std::u16string> archives;
  plan.makeArchiveMatcher = [&](const MatchPlan& given) {
    EXPECT_EQ(&given, &plan);
    return [&](std::u16string_view path, const WorkCheck&) {
      archives.emplace_back(path);
      return FileMatch::kMiss;
    };
  };
  EXPECT_EQ(Match(u"C:\\a.txt"), FileMatch::kHit);
  EXPECT_EQ(Match(u"C:\\a.DOCX"), FileMatch::kMiss);
  EXPECT_EQ(archives, std::vector<std::u16string>{u"C:\\a.DOCX"});
  EXPECT_EQ(files.opened, 1u);
}

TEST_F(MatcherTest, WithoutAMatcherOfArchivesTheseAreMisses) {
  EXPECT_EQ(Match(u"C:\\a.DOCX"), FileMatch::kNoArchive);
}

TEST_F(MatcherTest, KnowsTheLimitOfTheSize) {
  files.bytes[u"C:\\a.txt"] = "a word" + std::string(2 << 20, '.');
  plan.contentMaxFileSizeMB = 1;
  EXPECT_EQ(Match(u"C:\\a.txt"), FileMatch::kTooLarge);
}

}  // namespace
}  // namespace quilmark
