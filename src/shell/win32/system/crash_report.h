// What is left of a crash: a minidump in the configuration directory and a line in the diagnostic log.
#pragma once

namespace quilmark {

// For every thread of the process, from here on.
void InstallCrashReport();

}  // namespace quilmark
