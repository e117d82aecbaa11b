// Reading of mapped files, whose pages may fail to come: a bad disk, a share that went away.
#pragma once

#include <span>

namespace quilmark {

// Runs look(subject). False if a page of `view` could not be read: `look` was then left in the middle,
// without the end of any scope in it. Every other exception goes its way. Not to be called within
// itself.
[[nodiscard]] bool LookGuarded(std::span<const char> view, void (*look)(void* subject), void* subject);

}  // namespace quilmark
