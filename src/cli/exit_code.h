// Exit codes of the console program.
#pragma once

namespace quilmark {

inline constexpr int kExitFound = 0;    // something was found, or changed
inline constexpr int kExitNothing = 1;  // nothing was
inline constexpr int kExitError = 2;    // standard error says why
inline constexpr int kExitInterrupted = 130;

}  // namespace quilmark
