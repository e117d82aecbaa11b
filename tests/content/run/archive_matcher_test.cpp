#include "content/run/archive_matcher.h"

#include <gtest/gtest.h>

#include <string>

#include "support/zip_builder.h"
#include "platform/generation.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

TEST(ZipMatcher, FindsWhatThePlanAsksForInsideArchives) {
  ScratchFolder folder;
  folder.MakeFile("hit.docx", MakeZip({{.name = "word/document.xml",
                                        .data = "<w:r><w:t>nee</w:t></w:r><w:r><w:t>dle</w:t></w:r>"}}));
  folder.MakeFile("other entry.docx", MakeZip({{.name = "readme.txt", .data = "needle"}}));
  folder.MakeFile("plain.docx", "needle");
  MatchPlan plan;
  plan.WideGroups = {{u"needle"}};
  plan.Groups = MakeContentGroups(plan.WideGroups);
  plan.InnerPatterns = {"*.xml"};
  plan.contentMaxFileSizeMB = 0;
  const ArchiveMatcher match = MakeZipMatcher(plan);
  const WorkCheck check(Ticket::Unlimited());
  EXPECT_EQ(match(folder.PathOf(u"hit.docx"), check), FileMatch::kHit);
  EXPECT_EQ(match(folder.PathOf(u"other entry.docx"), check), FileMatch::kMiss);
  EXPECT_EQ(match(folder.PathOf(u"plain.docx"), check), FileMatch::kNoArchive);
  EXPECT_EQ(match(folder.PathOf(u"hit.docx"), check), FileMatch::kHit) << "used again";
}

TEST(ZipMatcher, KnowsTheLimitOfTheSize) {
  ScratchFolder folder;
  folder.MakeFile("large.docx",
                  MakeZip({{.name = "a.xml", .data = "<t>needle</t>"},
                           {.name = "filler", .data = std::string(1'100'000, 'x'), .method = kStored}}));
  MatchPlan plan;
  plan.WideGroups = {{u"needle"}};
  plan.Groups = MakeContentGroups(plan.WideGroups);
  plan.InnerPatterns = {"*.xml"};
  plan.contentMaxFileSizeMB = 1;
  const WorkCheck check(Ticket::Unlimited());
  EXPECT_EQ(MakeZipMatcher(plan)(folder.PathOf(u"large.docx"), check), FileMatch::kTooLarge);
  plan.contentMaxFileSizeMB = 2;
  EXPECT_EQ(MakeZipMatcher(plan)(folder.PathOf(u"large.docx"), check), FileMatch::kHit);
}

}  // namespace
}  // namespace quilmark
