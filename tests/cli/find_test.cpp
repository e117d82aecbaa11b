// The console program as a whole, on folders made for the tests.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>

#include "platform/utf.h"
#include "support/run_program.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

namespace fs = std::filesystem;

// A path from the bytes of a name: UTF-8 on Windows, whatever they are on POSIX.
fs::path HostName(const std::string& name) {
#ifdef _WIN32
  const std::u16string units = FromUtf8(name);
  return fs::path(std::wstring(units.begin(), units.end()));
#else
  return name;
#endif
}

class Program : public testing::Test {
 protected:
  void File(const std::string& name) {
    const fs::path path = folder.HostPath() / HostName(name);
    fs::create_directories(path.parent_path());
    std::ofstream file(path);
    ASSERT_TRUE(file.good()) << path;
  }
  ProgramRun Find(std::vector<std::string> arguments, const std::string& input = {}) const {
    arguments.insert(arguments.begin(), "find");
    return RunProgram(QUILMARK_PROGRAM, arguments, input);
  }
  std::string Root() const { return Utf8(folder.HostPath()); }
  std::string HostPath(const fs::path& name) const {
    return Utf8((folder.HostPath() / name).make_preferred());
  }
  ScratchFolder folder;
};

TEST_F(Program, PrintsTheHostsOwnPaths) {
  File("docs/Report 2024.txt");
  File("docs/other.txt");
  const ProgramRun run = Find({"report", Root()});
  EXPECT_EQ(run.output, HostPath("docs/Report 2024.txt") + "\n");
  EXPECT_EQ(run.errors, "");
  EXPECT_EQ(run.exitCode, 0);
}

TEST_F(Program, PrintsDrivePathsWhenAsked) {
  File("docs/a.txt");
  EXPECT_EQ(Find({"--drive-paths", "a.txt", Root()}).output, "C:\\docs\\a.txt\n");
  EXPECT_EQ(Find({"--drive-paths", "--drive", "Q=" + Root(), "a.txt"}).output, "Q:\\docs\\a.txt\n");
}

TEST_F(Program, NothingFoundIsExitCodeOne) {
  File("a.txt");
  const ProgramRun run = Find({"zzz", Root()});
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.exitCode, 1);
}

TEST_F(Program, CountPrintsTheNumberAlone) {
  File("a1");
  File("a2");
  EXPECT_EQ(Find({"--count", "a", Root()}).output, "2\n");
  const ProgramRun none = Find({"--count", "zzz", Root()});
  EXPECT_EQ(none.output, "0\n");
  EXPECT_EQ(none.exitCode, 1);
}

TEST_F(Program, LimitCutsTheListAndNotTheCount) {
  for (int i = 0; i < 20; ++i) File("a" + std::to_string(i));
  EXPECT_EQ(Lines(Find({"--limit", "3", "a", Root()}).output).size(), 3u);
  EXPECT_EQ(Find({"--limit", "3", "--count", "a", Root()}).output, "20\n");
  EXPECT_EQ(Find({"--limit", "0", "a", Root()}).exitCode, 0);
}

TEST_F(Program, JsonIsAnObjectALine) {
  File("photos/\xE5\x8C\x97\xE4\xBA\xAC.jpg");
  EXPECT_EQ(Lines(Find({"--json", "--drive-paths", "photos or jpg", Root()}).output),
            (std::vector<std::string>{
                R"({"path":"C:\\photos","dir":true})",
                "{\"path\":\"C:\\\\photos\\\\\xE5\x8C\x97\xE4\xBA\xAC.jpg\",\"dir\":false}"}));
}

TEST_F(Program, EmptyQueryListsEverything) {
  File("a/b.txt");
  EXPECT_EQ(Lines(Find({"--drive-paths", "", Root()}).output),
            (std::vector<std::string>{"C:\\a", "C:\\a\\b.txt"}));
}

TEST_F(Program, PathOfAFolderListsItsContents) {
  File("sub/one.txt");
  File("sub/deep/two.txt");
  File("three.txt");
  const std::set<std::string> expected = {"C:\\sub\\one.txt", "C:\\sub\\deep"};
  for (const std::string& query :
       {HostPath("sub"), std::string("C:\\sub"), std::string("\"c:/sub/\"")}) {
    const auto lines = Lines(Find({"--drive-paths", query, Root()}).output);
    EXPECT_EQ(std::set<std::string>(lines.begin(), lines.end()), expected) << query;
  }
}

TEST_F(Program, ScopeKeepsToOneDrive) {
  File("one/x.txt");
  File("two/x.txt");
  const std::vector<std::string> folders = {HostPath("one"), HostPath("two")};
  EXPECT_EQ(Find({"--drive-paths", "--scope", "d:", "x", folders[0], folders[1]}).output, "D:\\x.txt\n");
  EXPECT_EQ(Lines(Find({"x", folders[0], folders[1]}).output).size(), 2u);
}

TEST_F(Program, InitialsAreMatchedWhenAsked) {
  File("\xE5\x8C\x97\xE4\xBA\xAC.txt");
  EXPECT_EQ(Find({"--count", "bj", Root()}).output, "0\n");
  EXPECT_EQ(Find({"--count", "--initials", "bj", Root()}).output, "1\n");
}

TEST_F(Program, StatsGoToStandardError) {
  File("a/b.txt");
  const ProgramRun run = Find({"--stats", "--count", "b.txt", Root()});
  EXPECT_EQ(run.output, "1\n");
  EXPECT_NE(run.errors.find("1 files, 1 folders in "), std::string::npos) << run.errors;
  EXPECT_NE(run.errors.find("1 hits in "), std::string::npos) << run.errors;
}

TEST_F(Program, InteractiveAnswersALineAtATime) {
  File("alpha.txt");
  File("beta.txt");
  const ProgramRun run = Find({"--interactive", "--drive-paths", Root()}, "alpha\nnothing\n\n");
  const auto lines = Lines(run.output);
  ASSERT_EQ(lines.size(), 9u) << run.output;
  EXPECT_EQ(lines[0], "> alpha");
  EXPECT_EQ(lines[1], "C:\\alpha.txt");
  EXPECT_EQ(lines[2].substr(0, 8), "1 hits, ");
  EXPECT_EQ(lines[4].substr(0, 8), "0 hits, ");
  EXPECT_EQ(lines[8].substr(0, 8), "2 hits, ");
  EXPECT_EQ(run.exitCode, 0);
}

TEST_F(Program, InteractiveAnswersProgramsWithAnEmptyLineAfterEachAnswer) {
  File("alpha.txt");
  File("alps.txt");
  const ProgramRun json = Find({"--interactive", "--json", "--drive-paths", "--sort", "name", Root()},
                               "al\nnothing\ns:word\nalps\n");
  EXPECT_EQ(Lines(json.output),
            (std::vector<std::string>{R"({"path":"C:\\alpha.txt","dir":false})",
                                      R"({"path":"C:\\alps.txt","dir":false})", "", "", "",
                                      R"({"path":"C:\\alps.txt","dir":false})", ""}));
  EXPECT_NE(json.errors.find("content search"), std::string::npos) << json.errors;
  EXPECT_EQ(json.exitCode, 0);
  const ProgramRun count = Find({"--interactive", "--count", Root()}, "al\nnothing\n");
  EXPECT_EQ(count.output, "2\n\n0\n\n");
}

// A dialogue shows a reader the first few; a program gets all.
TEST_F(Program, InteractiveGivesProgramsEveryHit) {
  for (int i = 0; i < 15; ++i) File("file" + std::to_string(i));
  EXPECT_EQ(Lines(Find({"--interactive", "--json", Root()}, "file\n").output).size(), 16u);
  EXPECT_EQ(Lines(Find({"--interactive", "--json", "--limit", "3", Root()}, "file\n").output).size(),
            4u);
}

TEST_F(Program, MistakesAreSaidOnStandardErrorWithExitCodeTwo) {
  File("file.txt");
  fs::create_directories(folder.HostPath() / "empty");
  const auto expectError = [&](std::vector<std::string> arguments, const std::string& reason) {
    const ProgramRun run = Find(std::move(arguments));
    EXPECT_EQ(run.exitCode, 2) << reason;
    EXPECT_EQ(run.output, "") << reason;
    EXPECT_NE(run.errors.find(reason), std::string::npos) << run.errors;
  };
  expectError({"x", HostPath("gone")}, "does not exist");
  expectError({"x", HostPath("file.txt")}, "is neither a folder nor an NTFS volume");
  expectError({"x", HostPath("empty")}, "has no entries");
  expectError({"--scope", "Z:", "x", Root()}, "--scope takes");
  expectError({"--scope", "here", "x", Root()}, "--scope takes");
  expectError({"--drive", "9=/x", "x"}, "--drive takes X=PATH");
  expectError({"s:word", Root()}, "content search");
}

TEST_F(Program, VersionIsPrinted) {
  EXPECT_EQ(RunProgram(QUILMARK_PROGRAM, {"--version"}).output, "quilmark 0.1.0\n");
}

// --- an independent count
// ----------------------------------------------------------------------------------------

// Names that trip programs up. Those that a system refuses are left out of the tree and so of both
// counts.
std::vector<std::string> OddNames() {
  return {"README",
          ".hidden",
          "...",
          "  leading blanks.txt",
          "no extension",
          "UPPER.TXT",
          std::string(255, 'n'),
          std::string(251, 'm') + ".txt",
          "caf\xC3\xA9.txt",
          "cafe\xCC\x81.txt",
          "\xE5\x8C\x97\xE4\xBA\xAC \xE6\x96\xB0.doc",
          "\xF0\x9F\x98\x80 smile.txt",
          "\xD0\x9E\xD1\x82\xD1\x87\xD1\x91\xD1\x82.TXT",
          "bad\xFF\xFE"
          "bytes.txt",
          "cut\xE5\x8C.txt",
          "line\nbreak.txt",
          "back\\slash.txt",
          "tab\there",
          "quote\"s",
          "a and b or c.txt",
          "\xC4\xB0stanbul.txt",
          "star*.txt",
          "lib.so.1"};
}

std::string FoldedAscii(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c); });
  return text;
}

// Host's bytes of a name on POSIX, UTF-8 on Windows.
std::string NameBytes(const fs::path& path) {
#ifdef _WIN32
  return Utf8(path.filename());
#else
  return path.filename().native();
#endif
}

template <typename Rule>
size_t CountByWalking(const fs::path& root, Rule rule) {
  size_t count = 0;
  for (const auto& entry : fs::recursive_directory_iterator(root))
    count += rule(FoldedAscii(NameBytes(entry.path())));
  return count;
}

TEST_F(Program, CountsEqualAnIndependentWalkOverOddNames) {
  size_t made = 0;
  for (const char* const parent : {"", "one", "one/two", "\xE6\x96\x87\xE4\xBB\xB6"}) {
    for (const std::string& name : OddNames()) {
      std::error_code error;
      fs::create_directories(folder.HostPath() / HostName(parent), error);
      std::ofstream file(folder.HostPath() / HostName(parent) / HostName(name));
      made += file.good();
    }
  }
  ASSERT_GT(made, 50u);
  const auto holds = [](const std::string& name, const char* part) {
    return name.find(part) != name.npos;
  };
  const auto count = [&](const std::string& query) { return Find({"--count", query, Root()}).output; };
  const auto expected = [&](auto rule) {
    return std::to_string(CountByWalking(folder.HostPath(), rule)) + "\n";
  };
  EXPECT_EQ(count("txt"), expected([&](const std::string& n) { return holds(n, "txt"); }));
  EXPECT_EQ(count("lib and .so or b"), expected([&](const std::string& n) {
              return (holds(n, "lib") && holds(n, ".so")) || holds(n, "b");
            }));
  EXPECT_EQ(count("."), expected([&](const std::string& n) { return holds(n, "."); }));
  EXPECT_EQ(count("\"a and b\""), expected([&](const std::string& n) { return holds(n, "a and b"); }));
  EXPECT_EQ(count("*"), expected([&](const std::string& n) { return holds(n, "*"); }));
  EXPECT_EQ(count("\xE5\x8C\x97"),
            expected([&](const std::string& n) { return holds(n, "\xE5\x8C\x97"); }));
  EXPECT_EQ(count("\xF0\x9F\x98\x80"),
            expected([&](const std::string& n) { return holds(n, "\xF0\x9F\x98\x80"); }));
  EXPECT_EQ(count("\"\""), expected([](const std::string&) { return true; }));
  EXPECT_EQ(count(std::string(200, 'n')),
            expected([&](const std::string& n) { return holds(n, "nnn"); }));
}

#ifndef _WIN32

TEST_F(Program, NamesThatAreNoUtf8ComeOutAsTheyWentIn) {
  File(
      "bad\xFF\xFE"
      "bytes.txt");
  File("back\\slash");
  EXPECT_EQ(Find({"bytes", Root()}).output, Root() +
                                                "/bad\xFF\xFE"
                                                "bytes.txt\n");
  EXPECT_EQ(Find({"back\\\\slash", Root()}).output, Root() + "/back\\slash\n");
  EXPECT_EQ(Find({"bad\xFF", Root()}).exitCode, 0);
}

TEST_F(Program, LinksAreEntriesAndNotFollowed) {
  File("real/inside.txt");
  fs::create_directory_symlink(folder.HostPath() / "real", folder.HostPath() / "link");
  fs::create_symlink(folder.HostPath() / "nowhere", folder.HostPath() / "dangling");
  EXPECT_EQ(Find({"--count", "inside", Root()}).output, "1\n");
  EXPECT_EQ(Find({"--count", "link or dangling", Root()}).output, "2\n");
}

#endif

}  // namespace
}  // namespace quilmark
