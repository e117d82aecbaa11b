// What a console program asks of the system.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace quilmark {

// The stream goes to a person and not to a file or a pipe.
bool IsTerminal(std::FILE* stream);

// Bytes go out as they are, as UTF-8; a reader that went away makes writes fail instead of ending the
// program.
void PrepareConsole();

// From now on Ctrl+C calls `interrupt` on some thread or in a signal handler, where it may set atomic
// flags and nothing else. A second Ctrl+C ends the program as ever.
void OnInterrupt(void (*interrupt)());

// True if a console program without arguments has drives of its own to go by.
bool HasSystemDrives();

}  // namespace quilmark
