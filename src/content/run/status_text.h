// What a content search tells in the title of the window while it runs.
#pragma once

#include <cstdint>
#include <string>

#include "platform/generation.h"

namespace quilmark {

enum class ContentStatus : uint8_t {
  kNoCandidates,  // no number
  kStart,         // the number of candidates
  kProgress,      // files looked at, and the number of candidates
};

// The text in the language of the interface, of 255 units at most.
std::u16string ContentStatusText(ContentStatus status, uint64_t first = 0, uint64_t second = 0);

// Posts it as WM_SEARCH_STATUS under the ticket's number. Lost where there is no window.
void PostContentStatus(const Ticket& ticket, ContentStatus status, uint64_t first = 0,
                       uint64_t second = 0);

}  // namespace quilmark
