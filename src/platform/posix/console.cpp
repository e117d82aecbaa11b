#include "platform/console.h"

#include <signal.h>
#include <unistd.h>

#include <cerrno>

namespace quilmark {

static void (*interruptHandler)() = nullptr;

bool IsTerminal(std::FILE* stream) { return isatty(fileno(stream)) == 1; }

bool IsReaderGone(std::FILE*, int error) { return error == EPIPE; }

void PrepareConsole() { signal(SIGPIPE, SIG_IGN); }

void OnInterrupt(void (*interrupt)()) {
  interruptHandler = interrupt;
  struct sigaction action = {};
  action.sa_handler = [](int) { interruptHandler(); };
  action.sa_flags = static_cast<int>(SA_RESETHAND);  // no restart: a read of standard input ends
  sigaction(SIGINT, &action, nullptr);
}

std::optional<std::string> ReadInputLine() { return ReadStreamLine(stdin); }

bool HasSystemDrives() { return false; }

}  // namespace quilmark
