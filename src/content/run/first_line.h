// Where in a file a content query is satisfied first, for whoever shows hits with their lines.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "content/match/content_group.h"
#include "content/match/plain_file.h"

namespace quilmark {

// A line of a file.
struct FileLine {
  uint64_t number = 0;  // from 1
  std::string text;     // UTF-8, without its end; of a long line the part around the hit
};

// Nothing is looked for behind so many bytes.
inline constexpr size_t kMostLineBytes = 64u << 20;

// The first line that holds a form of any term of a group that the file satisfies, in the encoding of
// that form; text that is neither UTF-8 nor UTF-16 shows U+FFFD where it is not ASCII. Empty where the
// file cannot be read, or holds none within kMostLineBytes.
[[nodiscard]] std::optional<FileLine> FirstLineOf(std::u16string_view path,
                                                  const std::vector<ContentGroup>& groups,
                                                  PlainFileReader& reader);

// The same of bytes that are there. Lines end with LF, those of UTF-16 with its wide form.
[[nodiscard]] std::optional<FileLine> FirstLineIn(std::string_view bytes,
                                                  const std::vector<ContentGroup>& groups);

}  // namespace quilmark
