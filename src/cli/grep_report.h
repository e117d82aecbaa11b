// What the command "grep" prints of a hit, while it searches, and at the end.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "cli/hit_writer.h"
#include "content/run/first_line.h"
#include "content/run/tree_search.h"

namespace quilmark {

// A line of output with its end: "path", "path:12:text of the line", or a JSON object with path, dir
// and, where there is a line, line and text. Of `format`, json and isShown are asked.
std::string FormatGrepHit(std::u16string_view path, const std::optional<FileLine>& line,
                          HitFormat format);

// "1,234 files, 5 hits".
std::string GrepProgress(const TreeFigures& figures);

// Lines for standard error: how many files and folders could not be searched, and why. Empty where all
// could be.
std::string GrepSummary(const TreeFigures& figures);

}  // namespace quilmark
