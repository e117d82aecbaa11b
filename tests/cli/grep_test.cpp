// The command "grep" of the console program as a whole, on files made for the tests.
#include <gmock/gmock.h>

#include <algorithm>

#include "support/run_program.h"
#include "support/scratch_folder.h"
#include "support/zip_builder.h"

namespace quilmark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

struct GrepProgram : testing::Test {
  ProgramRun Grep(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), "grep");
    return RunProgram(QUILMARK_PROGRAM, arguments);
  }
  // The lines of the output, in order.
  std::vector<std::string> Found(std::vector<std::string> arguments) const {
    arguments.push_back(Root());
    auto lines = Lines(Grep(std::move(arguments)).output);
    std::sort(lines.begin(), lines.end());
    return lines;
  }
  std::string Root() const { return Utf8(folder.HostPath()); }
  std::string HostPath(const std::filesystem::path& name) const {
    return Utf8((folder.HostPath() / name).make_preferred());
  }
  ScratchFolder folder;
};

TEST_F(GrepProgram, PrintsTheFilesThatHoldTheWords) {
  folder.MakeFile("docs/a.txt", "some words");
  folder.MakeFile("docs/b.txt", "some other words");
  folder.MakeFile("c.md", std::string("\xFF\xFEs\0o\0m\0e\0", 10));
  EXPECT_THAT(Found({"some"}),
              ElementsAre(HostPath("c.md"), HostPath("docs/a.txt"), HostPath("docs/b.txt")));
  EXPECT_THAT(Found({"some and other"}), ElementsAre(HostPath("docs/b.txt")));
  EXPECT_THAT(Found({"-l", "other or nothing"}), ElementsAre(HostPath("docs/b.txt")));
  EXPECT_THAT(Found({"Some"}), IsEmpty());
  EXPECT_THAT(Found({"--ext", ".md,.log", "some"}), ElementsAre(HostPath("c.md")));
}

TEST_F(GrepProgram, EndsWithTheCodesOfFind) {
  folder.MakeFile("a.txt", "words");
  EXPECT_EQ(Grep({"words", Root()}).exitCode, 0);
  const ProgramRun nothing = Grep({"none", Root()});
  EXPECT_EQ(nothing.exitCode, 1);
  EXPECT_EQ(nothing.output, "");
  EXPECT_EQ(nothing.errors, "");
  const ProgramRun missing = Grep({"words", HostPath("missing")});
  EXPECT_EQ(missing.exitCode, 2);
  EXPECT_THAT(missing.errors, StartsWith("quilmark: " + HostPath("missing") + " does not exist"));
  EXPECT_EQ(Grep({"  ", Root()}).exitCode, 2);
}

TEST_F(GrepProgram, CountsFilesAlone) {
  folder.MakeFile("a.txt", "words words");
  folder.MakeFile("b.txt", "words");
  EXPECT_EQ(Grep({"--count", "words", Root()}).output, "2\n");
  const ProgramRun none = Grep({"--count", "none", Root()});
  EXPECT_EQ(none.output, "0\n");
  EXPECT_EQ(none.exitCode, 1);
}

TEST_F(GrepProgram, PrintsTheFirstLineOfEachHit) {
  folder.MakeFile("a.txt", "one\ntwo words\nmore words\n");
  EXPECT_THAT(Found({"--line", "words"}), ElementsAre(HostPath("a.txt") + ":2:two words"));
  const std::string json = Grep({"--json", "--line", "words", Root()}).output;
  EXPECT_NE(json.find(R"("dir":false,"line":2,"text":"two words"})"), json.npos) << json;
}

TEST_F(GrepProgram, TakesAFileForAPath) {
  folder.MakeFile("a.txt", "words");
  folder.MakeFile("b.txt", "words");
  EXPECT_EQ(Grep({"words", HostPath("b.txt")}).output, HostPath("b.txt") + "\n");
}

TEST_F(GrepProgram, LooksIntoOfficeFiles) {
  folder.MakeFile(
      "a.docx",
      MakeZip({{.name = "word/document.xml", .data = "<w:t>some wo</w:t></w:r><w:r><w:t>rds</w:t>"}}));
  folder.MakeFile("b.docx", MakeZip({{.name = "word/document.xml", .data = "<w:t>other</w:t>"}}));
  folder.MakeFile("c.docx", "words, and no archive");
  const ProgramRun run = Grep({"words", Root()});
  EXPECT_EQ(run.output, HostPath("a.docx") + "\n");
  EXPECT_NE(run.errors.find("1 file not searched"), std::string::npos) << run.errors;
}

TEST_F(GrepProgram, SaysWhatItLeftOut) {
  folder.MakeFile("a.txt", "words");
  folder.MakeFile("large.txt", "words" + std::string(1'100'000, '.'));
  const ProgramRun run = Grep({"--max-size", "1", "--threads", "3", "words", Root()});
  EXPECT_EQ(run.output, HostPath("a.txt") + "\n");
  EXPECT_THAT(run.errors, StartsWith("quilmark: 1 file not searched: 1 larger than --max-size"));
  EXPECT_EQ(run.exitCode, 0);
}

}  // namespace
}  // namespace quilmark
