#include "cli/run_console.h"

#include <cstdio>

#include "cli/find.h"
#include "cli/grep.h"
#include "cli/options.h"
#include "cli/watch.h"
#include "config/log.h"
#include "platform/console.h"
#include "platform/disk_prompts.h"

namespace quilmark {

int RunConsole(std::vector<std::string> arguments) {
  NeverAskForMedia();
  PrepareConsole();
  InstallBackgroundExceptionLog();
  const CommandLine command = ParseCommandLine(std::move(arguments));
  if (command.find) return RunFind(*command.find);
  if (command.grep) return RunGrep(*command.grep);
  if (command.watch) return RunWatch(*command.watch);
  std::fputs(command.text.c_str(), command.exitCode == 0 ? stdout : stderr);
  return command.exitCode;
}

}  // namespace quilmark
