#include "cli/run_console.h"

#include <cstdio>

#include "cli/find.h"
#include "cli/options.h"
#include "config/log.h"
#include "platform/console.h"

namespace quilmark {

int RunConsole(std::vector<std::string> arguments) {
  PrepareConsole();
  InstallBackgroundExceptionLog();
  const CommandLine command = ParseCommandLine(std::move(arguments));
  if (command.find) return RunFind(*command.find);
  std::fputs(command.text.c_str(), command.exitCode == 0 ? stdout : stderr);
  return command.exitCode;
}

}  // namespace quilmark
