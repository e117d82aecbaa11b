// A configuration directory of its own for a test.
#pragma once

#include "support/environment.h"
#include "support/scratch_folder.h"

namespace quilmark {

struct ScratchConfig {
  ScratchFolder folder;
  ScopedEnvironment environment{"QUILMARK_CONFIG_DIR", folder.HostPath().string()};
};

}  // namespace quilmark
