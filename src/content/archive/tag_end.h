// Where a tag of XML ends.
#pragma once

namespace quilmark {

// The first '>' in [first, last) that stands outside of quotes; `last` without one. `first` is behind
// the tag's '<'. A quote is closed by the same quote alone. Bytes, or units of UTF-16.
const char* FindTagEnd(const char* first, const char* last);
const char16_t* FindTagEnd(const char16_t* first, const char16_t* last);

// The same end, where it is the first '>' at all and no '<' stands before it; null otherwise, and
// without an end.
const char* FindPlainTagEnd(const char* first, const char* last);

}  // namespace quilmark
