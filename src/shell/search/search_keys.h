// The search box and the keys of the view. Interface thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "shell/search/search_view.h"

namespace quilmark {

inline constexpr size_t kLongestQuery = 255;  // units that the box takes
inline constexpr uint32_t kKeyTab = 9, kKeyEnter = 13, kKeyEscape = 27, kKeyDelete = 46, kKeyF2 = 113,
                          kKeyF4 = 115;  // virtual key codes

// Searches for what the search box holds. The timer 30003 calls it when the user pauses.
void StartTypedSearch(const SearchView& view);

// Searches anew after the set of volumes has changed; an empty box shows the recent opens. The box
// itself is read, as it does not report a text that a program has put there.
void SearchAgain(const ViewContext& context);

// Answers a key in the box, which holds `text`: Enter searches at once, Escape ends a content search.
// Enter and F4 ask for the types of its files where a content search has no words.
// isTaken is false for any other key, which the edit takes.
Effects TakeSearchKey(const ViewContext& context, uint32_t key, std::u16string text);

// Answers a key while the list has the focus: with a command that runs once all else is done. isTaken is
// false for a key without one. One that is held down runs its command once.
Effects TakeListKey(const KeyEvent& event);

}  // namespace quilmark
