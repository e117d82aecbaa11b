#include "content/archive/zip_file.h"

#include <gtest/gtest.h>

#include <string>

#include "content/archive/hostile_archives.h"
#include "platform/generation.h"
#include "support/scratch_folder.h"
#include "support/system_faults.h"
#include "support/zip_builder.h"

namespace quilmark {
namespace {

const WorkCheck kGoesOn(Ticket::Unlimited());

ArchiveQuery Query() {
  const WideGroups groups{{u"needle"}};
  return {MakeArchiveTerms(MakeContentGroups(groups), groups), {"*.xml"}};
}

class ZipFile : public testing::Test {
 protected:
  FileMatch Match(std::u16string_view name, int limitMB = 100) {
    return MatchZipFile(folder_.PathOf(name), Query(), kGoesOn, limitMB, reader_);
  }
  ScratchFolder folder_;
  ZipFileReader reader_;
};

TEST_F(ZipFile, IsReadFromItsPath) {
  folder_.MakeFile("a.docx", OfficeArchive());
  folder_.MakeFile("b.docx", MakeZip({{.name = "a.xml", .data = "other"}}));
  EXPECT_EQ(Match(u"a.docx"), FileMatch::kHit);
  EXPECT_EQ(Match(u"b.docx"), FileMatch::kMiss);
  EXPECT_EQ(Match(u"a.docx"), FileMatch::kHit);
}

TEST_F(ZipFile, ThatIsNoneIsNoArchive) {
  folder_.MakeFile("a.docx", "plain text with a needle in it");
  folder_.MakeFile("b.docx", "");
  EXPECT_EQ(Match(u"a.docx"), FileMatch::kNoArchive);
  EXPECT_EQ(Match(u"b.docx"), FileMatch::kNoArchive);
}

TEST_F(ZipFile, ThatIsNotThereCannotBeOpened) {
  folder_.MakeFolder("folder.docx");
  EXPECT_EQ(Match(u"a.docx"), FileMatch::kCannotOpen);
  EXPECT_NE(Match(u"folder.docx"), FileMatch::kHit);
}

TEST_F(ZipFile, AboveTheLimitIsTooLarge) {
  folder_.MakeFile("a.docx", OfficeArchive() + std::string());
  const std::string archive =
      MakeZip({{.name = "a.xml", .data = "<t>needle</t>"}}, {.before = std::string(1'048'576, ' ')});
  folder_.MakeFile("b.docx", archive);
  folder_.MakeFile("c.docx", archive.substr(archive.size() - 1'048'576));
  EXPECT_EQ(Match(u"b.docx", 1), FileMatch::kTooLarge);
  EXPECT_EQ(Match(u"c.docx", 1), FileMatch::kHit);
  EXPECT_EQ(Match(u"b.docx", 2), FileMatch::kHit);
  EXPECT_EQ(Match(u"b.docx", 0), FileMatch::kHit);
  EXPECT_EQ(Match(u"b.docx", -1), FileMatch::kHit);
}

TEST_F(ZipFile, OfANetworkIsNotTouched) {
  const SystemFaults faults(FaultKind::kOnce);
  EXPECT_EQ(MatchZipFile(u"\\\\server\\share\\a.docx", Query(), kGoesOn, 100, reader_),
            FileMatch::kNetwork);
  EXPECT_EQ(MatchZipFile(u"\\\\?\\C:\\a.docx", Query(), kGoesOn, 100, reader_), FileMatch::kNetwork);
  EXPECT_TRUE(faults.Calls().empty());
}

TEST_F(ZipFile, OfAStaleSearchIsNotTouched) {
  folder_.MakeFile("a.docx", OfficeArchive());
  const SystemFaults faults(FaultKind::kOnce);
  EXPECT_EQ(MatchZipFile(folder_.PathOf(u"a.docx"), Query(), WorkCheck(Ticket()), 100, reader_),
            FileMatch::kStale);
  EXPECT_TRUE(faults.Calls().empty());
}

TEST_F(ZipFile, IsNeverLeftOpen) {
  folder_.MakeFile("a.docx", OfficeArchive());
  const int calls = FailEachCall(FaultKind::kOnce, [&](auto failing) {
    FileMatch outcome = FileMatch::kHit;
    const bool hasFailed = failing([&] { outcome = Match(u"a.docx"); });
    if (!hasFailed) EXPECT_EQ(outcome, FileMatch::kHit);
  });
  EXPECT_GT(calls, 4);
}

}  // namespace
}  // namespace quilmark
