// The icons and thumbnails of the system's shell.
#pragma once

#include "shell/list/icon_source.h"

namespace quilmark {

// The one source of the program, which holds nothing and lives as long as the process: a job may ask it
// until the end.
IconSource& TheShellIcons();

}  // namespace quilmark
