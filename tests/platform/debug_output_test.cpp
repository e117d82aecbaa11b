#include "platform/debug_output.h"

#include <gtest/gtest.h>

#include <string>

namespace quilmark {
namespace {

std::string heard;

TEST(DebugOutput, GoesToAListenerUntilItEnds) {
  heard.clear();
  WriteDebugOutput("before\n");
  SetDebugOutputListener([](std::string_view text) { heard += text; });
  WriteDebugOutput("one\n");
  WriteDebugOutput("");
  WriteDebugOutput("two\n");
  SetDebugOutputListener(nullptr);
  WriteDebugOutput("behind\n");
  EXPECT_EQ(heard, "one\ntwo\n");
}

}  // namespace
}  // namespace quilmark
