// What the program asks the shell to start, written down by it instead (program/shell_calls.cpp).
#pragma once

#include <string>
#include <vector>

#include "platform/text_file.h"
#include "support/environment.h"
#include "support/scratch_folder.h"

namespace quilmark {

// A base of a test's class that stands before the program, which inherits the variable.
class ShellLog {
 protected:
  // The calls until now, in their order: verb, file, arguments and folder, with tabs between.
  std::vector<std::u16string> ShellCalls() const {
    std::u16string text = ReadTextFile(log_.PathOf(u"log")).value_or(u"");
    std::vector<std::u16string> calls;
    for (size_t end; (end = text.find(u'\n')) != std::u16string::npos; text.erase(0, end + 1)) {
      calls.push_back(text.substr(0, end));
    }
    return calls;
  }

 private:
  ScratchFolder log_;
  ScopedEnvironment variable_{"QUILMARK_TEST_SHELL_LOG", (log_.HostPath() / "log").string()};
};

}  // namespace quilmark
