// The lines of a settings file: "key=value", read with forgiveness.
#pragma once

#include <optional>

#include "platform/text_file.h"

namespace quilmark {

// The next line that has an "=", as key and value; empty at the end of the text. A line of more than
// kTextLineLimit units comes in pieces, each of which counts as a line.
[[nodiscard]] std::optional<KeyValue> NextKeyValue(TextLines& lines);

}  // namespace quilmark
