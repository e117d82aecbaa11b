#include "cli/options.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

TEST(Options, FirstTextIsTheQueryAndTheRestAreFolders) {
  const CommandLine command = ParseCommandLine({"find", "a and b", "/usr", "/srv"});
  ASSERT_TRUE(command.find.has_value());
  EXPECT_EQ(command.find->query, "a and b");
  EXPECT_EQ(command.find->paths, (std::vector<std::string>{"/usr", "/srv"}));
  EXPECT_EQ(command.find->scope, "all");
  EXPECT_FALSE(command.find->limit.has_value());
}

TEST(Options, OptionsMayStandAnywhere) {
  const CommandLine command =
      ParseCommandLine({"find", "--json", "q", "--limit", "5", "/usr", "--drive", "D=/srv", "--drive",
                        "E=/opt", "--scope", "D:", "--initials", "--drive-paths", "--stats"});
  ASSERT_TRUE(command.find.has_value());
  EXPECT_TRUE(command.find->json);
  EXPECT_TRUE(command.find->initials);
  EXPECT_TRUE(command.find->drivePaths);
  EXPECT_TRUE(command.find->stats);
  EXPECT_EQ(command.find->limit, 5u);
  EXPECT_EQ(command.find->drives, (std::vector<std::string>{"D=/srv", "E=/opt"}));
  EXPECT_EQ(command.find->scope, "D:");
  EXPECT_EQ(command.find->paths, std::vector<std::string>{"/usr"});
}

TEST(Options, InteractiveTakesFoldersOnly) {
  const CommandLine command = ParseCommandLine({"find", "--interactive", "/usr"});
  ASSERT_TRUE(command.find.has_value());
  EXPECT_EQ(command.find->query, "");
  EXPECT_EQ(command.find->paths, std::vector<std::string>{"/usr"});
}

TEST(Options, EmptyQueryIsAQuery) {
  const CommandLine command = ParseCommandLine({"find", "", "/usr"});
  ASSERT_TRUE(command.find.has_value());
  EXPECT_EQ(command.find->query, "");
}

TEST(Options, BracketsAndSlashesAreOrdinaryText) {
  const CommandLine command =
      ParseCommandLine({"find", "[a,b]", "[2024]", "{}", "/srv", "--drive", "D=[c,d]"});
  ASSERT_TRUE(command.find.has_value()) << command.text;
  EXPECT_EQ(command.find->query, "[a,b]");
  EXPECT_EQ(command.find->paths, (std::vector<std::string>{"[2024]", "{}", "/srv"}));
  EXPECT_EQ(command.find->drives, std::vector<std::string>{"D=[c,d]"});
}

TEST(Options, FolderNamedLikeAnEmptyListIsAFolder) {
  EXPECT_EQ(ParseCommandLine({"find", "{}", "{}"}).find->paths, std::vector<std::string>{"{}"});
}

TEST(Options, WordsOfTheCommandLineMayBeTheQuery) {
  EXPECT_EQ(ParseCommandLine({"find", "find", "/usr"}).find->query, "find");
  EXPECT_EQ(ParseCommandLine({"find", "--", "--json", "/usr"}).find->query, "--json");
}

TEST(Options, MistakesAreErrorsWithTheirReason) {
  const auto expectError = [](std::vector<std::string> arguments, const std::string& word) {
    const CommandLine command = ParseCommandLine(std::move(arguments));
    EXPECT_FALSE(command.find.has_value()) << word;
    EXPECT_EQ(command.exitCode, 2) << word;
    EXPECT_NE(command.text.find(word), std::string::npos) << command.text;
  };
  expectError({}, "no command");
  expectError({"find"}, "no query");
  expectError({"grep", "x"}, "grep");
  expectError({"find", "--limit", "many", "x", "/usr"}, "--limit");
  expectError({"find", "--limit", "-1", "x", "/usr"}, "--limit");
  expectError({"find", "--limit", "[5]", "x", "/usr"}, "[5]\n");
  expectError({"find", "--nonsense", "x", "/usr"}, "--nonsense");
  expectError({"find", "--interactive", "--json", "/usr"}, "--interactive");
  expectError({"--completion", "fish"}, "fish");
}

TEST(Options, HelpAndVersionAreNoErrors) {
  const CommandLine help = ParseCommandLine({"find", "--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_NE(help.text.find("--interactive"), std::string::npos);
  EXPECT_NE(help.text.find("quilmark find --count '.so' /usr"), std::string::npos);
  EXPECT_EQ(ParseCommandLine({"--version"}).text, "quilmark 0.1.0\n");
}

TEST(Options, CompletionNamesEveryOption) {
  const CommandLine command = ParseCommandLine({"--completion", "bash"});
  EXPECT_EQ(command.exitCode, 0);
  for (const char* const option : {"--drive", "--scope", "--limit", "--initials", "--count", "--json",
                                   "--drive-paths", "--stats", "--interactive"}) {
    EXPECT_NE(command.text.find(option), std::string::npos) << option;
  }
}

}  // namespace
}  // namespace quilmark
