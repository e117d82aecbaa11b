#include "cli/run_console.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "cli/exit_code.h"

namespace quilmark {
namespace {

struct Answer {
  int exitCode = 0;
  std::string output, errors;
};

Answer Ask(std::vector<std::string> arguments) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  Answer answer{.exitCode = RunConsole(std::move(arguments))};
  answer.output = testing::internal::GetCapturedStdout();
  answer.errors = testing::internal::GetCapturedStderr();
  return answer;
}

TEST(RunConsole, PrintsWhatIsAskedOfTheProgramItself) {
  const Answer help = Ask({"--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_NE(help.output.find("find"), std::string::npos);
  EXPECT_EQ(help.errors, "");
  EXPECT_NE(Ask({"--completion", "bash"}).output.find("_quilmark"), std::string::npos);
}

TEST(RunConsole, TellsAMistakeOnStandardErrorAlone) {
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"find", "--no-such-option", "x"},
        {"nonsense"},
        {"watch", "--for", "x"}}) {
    const Answer answer = Ask(arguments);
    EXPECT_EQ(answer.exitCode, kExitError) << arguments[0];
    EXPECT_EQ(answer.output, "") << arguments[0];
    EXPECT_NE(answer.errors, "") << arguments[0];
  }
}

}  // namespace
}  // namespace quilmark
