// What a console program asks of the system.
#pragma once

#include <cstdio>
#include <optional>
#include <string>

namespace quilmark {

// Whether the stream goes to a person and not to a file or a pipe.
bool IsTerminal(std::FILE* stream);

// From now on bytes go out as they are, and a terminal shows them as UTF-8 until the program ends; a
// reader that went away makes writes fail with EPIPE instead of ending the program.
void PrepareConsole();

// Whether `error`, the errno of a write to `stream`, says that whoever read the stream went away.
bool IsReaderGone(std::FILE* stream, int error);

// From now on Ctrl+C calls `interrupt` on some thread or in a signal handler, where it may set atomic
// flags and nothing else. A second Ctrl+C ends the program as ever.
void OnInterrupt(void (*interrupt)());

// The next line of a stream without its end, LF or CR LF; empty at the end of the stream.
[[nodiscard]] std::optional<std::string> ReadStreamLine(std::FILE* stream);

// The same of standard input; what a person types at a terminal of Windows comes in UTF-8. Empty too if
// Ctrl+C cut a line of a terminal short.
[[nodiscard]] std::optional<std::string> ReadInputLine();

// True if the system has drives that a console program without arguments can search.
bool HasSystemDrives();

}  // namespace quilmark
