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

TEST(Options, FiltersAndOrdersAreParsed) {
  const CommandLine command =
      ParseCommandLine({"find", "--ext", "pdf,DOCX", "--category", "[Mine]", "--size", "1K..2K",
                        "--modified", "2025-01-31", "--sort", "size:asc", "--totals", "q", "/usr"});
  ASSERT_TRUE(command.find.has_value()) << command.text;
  const HitFilters& filters = command.find->filters;
  EXPECT_EQ(filters.extensions, (std::vector<std::u16string>{u".pdf", u".docx"}));
  EXPECT_EQ(filters.category, "[Mine]");
  EXPECT_EQ(filters.size, (SizeRange{1'024, 2'048}));
  EXPECT_EQ(filters.modified, ParseDateRange("2025-01-31", 0).value);
  EXPECT_EQ(command.find->sort, ParseSortOrder("size:asc").value);
  EXPECT_TRUE(command.find->totals);
}

TEST(Options, AttributesAreNeededForSizesAndDatesAlone) {
  const auto needs = [](std::vector<std::string> options) {
    options.insert(options.begin(), {"find", "q", "/usr"});
    return NeedsAttributes(ParseCommandLine(std::move(options)).find.value());
  };
  EXPECT_FALSE(needs({}));
  EXPECT_FALSE(needs({"--ext", "pdf", "--category", "x", "--sort", "name"}));
  EXPECT_FALSE(needs({"--sort", "path:desc"}));
  EXPECT_TRUE(needs({"--size", "1"}));
  EXPECT_TRUE(needs({"--modified", "1d"}));
  EXPECT_TRUE(needs({"--totals"}));
  for (const char* const column : {"size", "modified", "created"})
    EXPECT_TRUE(needs({"--sort", column}));
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
  expectError({"dig", "x"}, "dig");
  expectError({"find", "--limit", "many", "x", "/usr"}, "--limit");
  expectError({"find", "--limit", "-1", "x", "/usr"},
              "quilmark: --limit: takes a whole number from 0 on, not -1\n");
  expectError({"watch", "--limit", "0", "/image"}, "takes a whole number from 1 on, not 0\n");
  expectError({"find", "--limit", "[5]", "x", "/usr"}, "[5]\n");
  expectError({"find", "--nonsense", "x", "/usr"}, "--nonsense");
  expectError({"find", "--size", "1..0", "x", "/usr"}, "quilmark: --size: the range is reversed\n");
  expectError({"find", "--modified", "[]", "x", "/usr"}, "--modified: '[]' is no date");
  expectError({"find", "--sort", "", "x", "/usr"}, "--sort: '' is no column");
  expectError({"find", "--ext", ",", "x", "/usr"}, "--ext: no extension");
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
  for (const char* const option :
       {"--drive", "--scope", "--limit", "--initials", "--count", "--json", "--drive-paths", "--stats",
        "--interactive", "--ext", "--category", "--size", "--modified", "--sort", "--totals"}) {
    EXPECT_NE(command.text.find(option), std::string::npos) << option;
  }
}

TEST(Options, OfASearchInFiles) {
  const CommandLine command =
      ParseCommandLine({"grep", "--ext", ".txt,MD", "--threads", "4", "--max-size", "50", "--json",
                        "--line", "words and more", "/usr", "[a]"});
  ASSERT_TRUE(command.grep.has_value()) << command.text;
  EXPECT_EQ(command.grep->query, "words and more");
  EXPECT_EQ(command.grep->paths, (std::vector<std::string>{"/usr", "[a]"}));
  EXPECT_EQ(command.grep->extensions, (std::vector<std::u16string>{u".txt", u".md"}));
  EXPECT_EQ(command.grep->threads, 4u);
  EXPECT_EQ(command.grep->maxSizeMB, 50u);
  EXPECT_TRUE(command.grep->json);
  EXPECT_TRUE(command.grep->line);
  EXPECT_FALSE(command.grep->count);
  EXPECT_TRUE(ParseCommandLine({"grep", "word"}).grep->paths.empty());
  EXPECT_TRUE(ParseCommandLine({"grep", "-l", "word"}).grep.has_value());
}

TEST(Options, OfASearchInFilesThatContradictEachOtherAreRefused) {
  for (const std::vector<std::string>& options : {std::vector<std::string>{"--count", "--json"},
                                                  {"--count", "-l"},
                                                  {"--json", "-l"},
                                                  {"--count", "--line"},
                                                  {"-l", "--line"},
                                                  {"--threads", "-1"},
                                                  {"--max-size", "x"},
                                                  {"--ext", ""}}) {
    std::vector<std::string> arguments = {"grep", "word", "/usr"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    EXPECT_EQ(ParseCommandLine(arguments).exitCode, 2) << options[0] << " " << options[1];
  }
  EXPECT_EQ(ParseCommandLine({"grep"}).exitCode, 2);
}

}  // namespace
}  // namespace quilmark
