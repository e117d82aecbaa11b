// The command line of the console program.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/filter_options.h"

namespace quilmark {

// Which hits stay. A field that is empty keeps all.
struct HitFilters {
  std::vector<std::u16string> extensions;  // each with its dot
  std::optional<std::string> category;     // a label of the table of categories
  std::optional<SizeRange> size;
  std::optional<DateRange> modified;
};

// The options of the command "find".
struct FindOptions {
  std::string query;                // empty where interactive
  std::vector<std::string> paths;   // each becomes a drive, from C: on
  std::vector<std::string> drives;  // "X=PATH"
  std::string scope = "all";        // all, desktop, or a drive "X:"
  std::optional<uint64_t> limit;    // hits printed; empty: all
  HitFilters filters;
  std::optional<SortOrder> sort;  // empty: as they are found
  bool totals = false;            // a folder's size is that of all below it
  bool initials = false;
  bool count = false;
  bool json = false;
  bool drivePaths = false;
  bool null = false;  // a NUL ends each hit
  bool stats = false;
  bool interactive = false;
};

// The options of the command "watch".
struct WatchOptions {
  std::vector<std::string> paths;   // NTFS images or partitions; each becomes a drive, from C: on
  std::vector<std::string> drives;  // "X=PATH"
  std::optional<uint64_t> limit;    // changes printed; empty: all
  std::optional<uint64_t> seconds;  // how long to watch; empty: until Ctrl+C
  bool json = false;
};

// The options of the command "grep".
struct GrepOptions {
  std::string query;                       // words, joined by "and" and "or"
  std::vector<std::string> paths;          // folders and files; none: the current folder
  std::vector<std::u16string> extensions;  // each with its dot; none: every file
  uint64_t threads = 0;                    // 0: as many as the machine has processors
  uint64_t maxSizeMB = 0;                  // of a file that is looked at; 0: no limit
  bool count = false;
  bool json = false;
  bool list = false;  // names alone, as without
  bool line = false;
};

// What the arguments ask for: a command, or a text to print and the exit code that goes with it.
struct [[nodiscard]] CommandLine {
  std::optional<FindOptions> find;
  std::optional<WatchOptions> watch;
  std::optional<GrepOptions> grep;
  std::string text;
  int exitCode = 0;  // not 0: `text` is an error
};

// True if something that is asked for needs sizes or dates.
bool NeedsAttributes(const FindOptions& options);

// Reads the arguments, which are in UTF-8 or the host's bytes and come without the program's name.
CommandLine ParseCommandLine(std::vector<std::string> arguments);

}  // namespace quilmark
