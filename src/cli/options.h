// The command line of the console program.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quilmark {

struct FindOptions {
  std::string query;                // empty where interactive
  std::vector<std::string> paths;   // each becomes a drive, from C: on
  std::vector<std::string> drives;  // "X=PATH"
  std::string scope = "all";        // all, desktop, or a drive "X:"
  std::optional<uint64_t> limit;    // hits printed; empty: all
  bool initials = false;
  bool count = false;
  bool json = false;
  bool drivePaths = false;
  bool stats = false;
  bool interactive = false;
};

struct WatchOptions {
  std::vector<std::string> paths;   // NTFS images or partitions; each becomes a drive, from C: on
  std::vector<std::string> drives;  // "X=PATH"
  std::optional<uint64_t> limit;    // changes printed; empty: all
  std::optional<uint64_t> seconds;  // how long to watch; empty: until Ctrl+C
  bool json = false;
};

// What the arguments ask for: a command, or a text to print and the exit code that goes with it.
struct CommandLine {
  std::optional<FindOptions> find;
  std::optional<WatchOptions> watch;
  std::string text;
  int exitCode = 0;  // not 0: `text` is an error
};

// `arguments` without the program's name, in UTF-8 or the host's bytes.
CommandLine ParseCommandLine(std::vector<std::string> arguments);

}  // namespace quilmark
