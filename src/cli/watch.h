// The command "watch".
#pragma once

#include <string>

#include "cli/options.h"
#include "index/tables/volume_index.h"

namespace quilmark {

// Indexes and prints changes until it is interrupted or a limit is reached; the exit code.
int RunWatch(const WatchOptions& options);

// One line without its end. `time` is shown by the JSON form only.
std::string FormatChange(const VolumeChange& change, bool json, const std::string& time);

}  // namespace quilmark
