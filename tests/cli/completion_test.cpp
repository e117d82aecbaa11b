#include "cli/completion.h"

#include <gtest/gtest.h>

#include <iterator>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "cli/options.h"

namespace quilmark {
namespace {

// The long options in the help of a command.
std::set<std::string> OptionsOf(const std::string& command) {
  const std::string help = ParseCommandLine({command, "--help"}).text;
  std::set<std::string> options;
  const std::regex option("--[a-z][a-z-]*");
  for (std::sregex_iterator at(help.begin(), help.end(), option), end; at != end; ++at) {
    options.insert(at->str());
  }
  return options;
}

// The words that the script completes to, on the line that holds `part`.
std::set<std::string> WordsBeside(const std::string& part) {
  const std::string script = BashCompletion();
  const size_t at = script.find(part);
  if (at == std::string::npos) return {};
  const size_t begin = script.find("-W \"", at) + 4;
  std::string words = script.substr(begin, script.find('"', begin) - begin);
  words = std::regex_replace(words, std::regex("\\\\\n"), "");
  std::istringstream stream(words);
  return {std::istream_iterator<std::string>(stream), {}};
}

TEST(BashCompletion, KnowsAllOptionsOfWatch) {
  const auto words = WordsBeside("== watch ]]"), options = OptionsOf("watch");
  ASSERT_GT(options.size(), 3u);
  for (const std::string& option : options) EXPECT_EQ(words.count(option), 1u) << option;
}

TEST(BashCompletion, KnowsAllOptionsOfFindAndNoOther) {
  const auto words = WordsBeside("elif [[ $word == -* ]]"), options = OptionsOf("find");
  ASSERT_GT(options.size(), 10u);
  for (const std::string& option : options) EXPECT_EQ(words.count(option), 1u) << option;
  for (const std::string& word : words) EXPECT_EQ(options.count(word), 1u) << word;
}

TEST(BashCompletion, BelongsToTheProgram) {
  EXPECT_NE(std::string(BashCompletion()).find("complete -F _quilmark quilmark"), std::string::npos);
}

}  // namespace
}  // namespace quilmark
