// The command "watch".
#pragma once

#include <string>

#include "cli/options.h"
#include "index/tables/volume_index.h"

namespace quilmark {

// Indexes, then prints changes until it is interrupted or a limit is reached. Returns the exit code.
int RunWatch(const WatchOptions& options);

// One line of output without its end. The JSON form alone shows `time`.
std::string FormatChange(const VolumeChange& change, bool json, const std::string& time);

}  // namespace quilmark
