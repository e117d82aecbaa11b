// Starting with the user's log-on, by a task of the system's scheduler. Interface thread, which waits
// for the scheduler's tool.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "shell/view/window_port.h"

namespace quilmark {

// How a run of the tool ended.
struct ToolRun {
  bool hasRun = false;  // it was started, and ended by itself
  uint32_t exitCode =
      0;  // of the tool; 258 where it was ended for taking too long; else why not started
};

// What autostart asks of the system.
struct AutostartPort {
  virtual ~AutostartPort() = default;

  // Runs the scheduler's tool (schtasks.exe) without a window, and waits for its end, at most `mostMs`.
  [[nodiscard]] virtual ToolRun RunScheduler(const std::vector<std::u16string>& arguments,
                                             uint32_t mostMs) = 0;

  // Whether the user's Run key has a text for the program that is not empty: the old way.
  virtual bool HasRunValue() = 0;

  // Deletes that value. The error code of Windows; 0 also for a value that is not there.
  [[nodiscard]] virtual uint32_t DeleteRunValue() = 0;

  // The program's own full path.
  virtual std::u16string ProgramPath() = 0;
};

// The command line for a program and its arguments, each quoted as the usual splitting takes it back.
std::u16string CommandLineOf(std::u16string_view program, const std::vector<std::u16string>& arguments);

// Whether the program starts with the log-on, in the new way or in the old. Waits for the tool.
[[nodiscard]] bool IsAutostartEnabled(AutostartPort& port);

// Turns it on, or off where it is on in either way. Tells the user if that fails.
void ToggleAutostart(AutostartPort& port, WindowPort& window);

}  // namespace quilmark
