// Runs a program as a user would and keeps what it says.
#pragma once

#include <string>
#include <vector>

namespace quilmark {

struct ProgramRun {
  std::string output;  // of standard output
  std::string errors;  // of standard error
  int exitCode = -1;   // -1: it did not end by itself
};

// `program` and its arguments in UTF-8 or the host's bytes; `input` goes to its standard input.
ProgramRun RunProgram(const std::string& program, const std::vector<std::string>& arguments,
                      const std::string& input = {});

// What stands between the line ends, "\n" each.
std::vector<std::string> Lines(const std::string& text);

}  // namespace quilmark
