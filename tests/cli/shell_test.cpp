// The console program in the hands of a shell: pipes, a full disk, Ctrl+C, a terminal.
#ifndef _WIN32

#include <gtest/gtest.h>

#include <fstream>

#include "support/run_program.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

class Shell : public testing::Test {
 protected:
  void SetUp() override {
    for (int i = 0; i < 3'000; ++i) std::ofstream(folder.HostPath() / ("file" + std::to_string(i)));
  }
  // `script` finds the program in $0, the folder in $1, and a folder to write to in $2.
  ProgramRun Run(const std::string& script) const {
    return RunProgram("/bin/bash", {"-c", script, QUILMARK_PROGRAM, folder.HostPath().string(),
                                    scratch.HostPath().string()});
  }
  ScratchFolder folder, scratch;
};

TEST_F(Shell, ReaderThatGoesAwayEndsTheOutputQuietly) {
  const ProgramRun run = Run(R"("$0" find file "$1" | head -n 1 | wc -l; echo "${PIPESTATUS[0]}")");
  EXPECT_EQ(run.output, "1\n0\n");
  EXPECT_EQ(run.errors, "");
}

TEST_F(Shell, FullDiskIsAnError) {
  for (const std::string options : {"", "--count", "--json"}) {
    const ProgramRun run = Run("\"$0\" find " + options + " file \"$1\" >/dev/full");
    EXPECT_EQ(run.errors, "quilmark: standard output cannot be written to\n") << options;
    EXPECT_EQ(run.exitCode, 2) << options;
  }
  EXPECT_EQ(Run(R"(echo file | "$0" find --interactive "$1" >/dev/full)").exitCode, 2);
}

// The answer in the output says that the program waits for the next line.
TEST_F(Shell, InterruptEndsAWaitForInputAtOnce) {
  const ProgramRun run = Run(R"(
    mkfifo "$2/input"
    "$0" find --interactive "$1" <"$2/input" >"$2/output" &
    exec 3>"$2/input"
    echo file1 >&3
    until grep -q 'hits,' "$2/output" || ! kill -0 $!; do :; done
    kill -INT $!
    wait $!
    echo $?)");
  EXPECT_EQ(run.output, "130\n");
  EXPECT_EQ(run.errors, "");
}

TEST_F(Shell, DialogueGoesOnAfterAContentQuery) {
  const ProgramRun run =
      Run(R"(printf 's:word\r\nfile17\r\n' | "$0" find --interactive --limit 0 "$1")");
  EXPECT_TRUE(run.output.starts_with("> s:word\ncontent search is not available here\n> file17\n"))
      << run.output;
  EXPECT_NE(run.output.find("111 hits, "), std::string::npos) << run.output;
}

}  // namespace
}  // namespace quilmark

#endif
