// The command "grep" and links of the host.
#include <gmock/gmock.h>

#include <filesystem>

#include "support/run_program.h"
#include "support/scratch_folder.h"
#include "support/zip_builder.h"

namespace quilmark {
namespace {

TEST(GrepLinks, AreFollowedWhereTheUserNamesThemAlone) {
  ScratchFolder folder;
  folder.MakeFile("docs/a.txt", "words");
  folder.MakeFile("docs/b.docx", MakeZip({{.name = "word/document.xml", .data = "<w:t>words</w:t>"}}));
  const std::filesystem::path root = folder.HostPath(), docs = root / "docs";
  std::filesystem::create_symlink(docs / "a.txt", docs / "link.txt");
  std::filesystem::create_symlink(docs / "b.docx", docs / "link.docx");
  const auto found = [](const std::filesystem::path& path) {
    return Lines(RunProgram(QUILMARK_PROGRAM, {"grep", "words", path.string()}).output);
  };
  EXPECT_THAT(found(root),
              testing::UnorderedElementsAre((docs / "a.txt").string(), (docs / "b.docx").string()));
  EXPECT_THAT(found(docs / "link.txt"), testing::ElementsAre((docs / "link.txt").string()));
  EXPECT_THAT(found(docs / "link.docx"), testing::ElementsAre((docs / "link.docx").string()));
}

}  // namespace
}  // namespace quilmark
