// Work that somebody waits for, and not for ever.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

namespace quilmark {

// Runs each of `works` on a job called `name` (see RunBackground) and waits until all have ended, at
// most `mostMs`. False if one has not: it goes on by itself, so it owns what it uses. The result may be
// dropped by a caller that goes on either way. Work for which RunBackground gives no job runs on the
// calling thread, for as long as it takes, and what it throws goes to the caller.
bool RunWithin(const char* name, std::vector<std::function<void()>> works, uint32_t mostMs);

}  // namespace quilmark
