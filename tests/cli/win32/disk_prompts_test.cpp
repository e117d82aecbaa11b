#include <gtest/gtest.h>
#include <windows.h>

#include "cli/run_console.h"

namespace quilmark {
namespace {

TEST(DiskPrompts, AreOffInTheConsoleProgram) {
  const UINT former = SetErrorMode(SEM_NOGPFAULTERRORBOX);
  EXPECT_EQ(RunConsole({"--version"}), 0);
  EXPECT_EQ(GetErrorMode(), UINT{SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX});
  SetErrorMode(former);
}

}  // namespace
}  // namespace quilmark
