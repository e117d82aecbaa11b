// The search box and the window that chooses file types for a content search: when a text opens it, and
// what it writes into the box.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quilmark {

// Whether typing has asked for the window: `text` became "s:" in either case, or begins with it and
// newly ends in "|". Blanks at both ends count for nothing.
[[nodiscard]] bool AsksForPicker(std::u16string_view former, std::u16string_view text);

// Whether a key in the box asks for it: the text begins with "s:" in either case and has no words to
// look for.
[[nodiscard]] bool LacksWords(std::u16string_view text);

// A text for the box, and where the caret stands in it, in units.
struct PickedQuery {
  std::u16string text;
  size_t caret = 0;
};

// The query of the box with other extensions: its words, where it is a content query, and the caret
// behind them. Extensions that leave no room for words in a text of `longest` units are left out: those
// that were picked last are meant then.
[[nodiscard]] PickedQuery WithExtensions(std::u16string_view box,
                                         const std::vector<std::u16string>& extensions, size_t longest);

}  // namespace quilmark
