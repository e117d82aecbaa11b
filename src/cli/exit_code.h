// Exit codes of the console program.
#pragma once

namespace quilmark {

inline constexpr int kExitFound = 0;
inline constexpr int kExitNothing = 1;
inline constexpr int kExitError = 2;
inline constexpr int kExitInterrupted = 130;

}  // namespace quilmark
