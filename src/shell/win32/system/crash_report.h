// What is left of a crash: a minidump in the configuration directory and a line in the diagnostic log.
#pragma once

namespace quilmark {

// Has a crash of any thread reported from now on. Once, at the start: it also asks where reports go.
void InstallCrashReport();

}  // namespace quilmark
