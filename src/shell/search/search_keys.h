// The search box and the keys of the view. Interface thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "shell/search/search_view.h"

namespace quilmark {

inline constexpr size_t kLongestQuery = 255;  // units that the box takes
inline constexpr uint32_t kKeyTab = 9, kKeyEnter = 13, kKeyEscape = 27,
                          kKeyF2 = 113;  // virtual key codes

// The pause after a text that was typed.
void StartTypedSearch(const SearchView& view);

// Reads the search box again after the set of volumes changed; an empty box shows the recent opens. A
// text that a program has put there is told of by nobody.
void SearchAgain(const ViewContext& context);

// A key in the box, which holds the text: Enter searches at once, Escape ends a content search. The edit
// takes any other.
Effects TakeSearchKey(const ViewContext& context, uint32_t key, std::u16string text);

// A key while the list has the focus.
Effects TakeListKey(SearchView& view, const ViewContext& context, uint32_t key);

}  // namespace quilmark
