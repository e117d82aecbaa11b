#include "config/settings_lines.h"

namespace quilmark {

std::optional<KeyValue> NextKeyValue(TextLines& lines) {
  while (const auto line = NextLine(lines)) {
    if (const auto pair = SplitKeyValue(*line)) return pair;
  }
  return std::nullopt;
}

}  // namespace quilmark
