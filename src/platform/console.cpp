#include "platform/console.h"

namespace quilmark {

std::optional<std::string> ReadStreamLine(std::FILE* stream) {
  std::string line;
  for (int unit = std::fgetc(stream); unit != '\n'; unit = std::fgetc(stream)) {
    if (unit != EOF) {
      line.push_back(static_cast<char>(unit));
    } else if (line.empty()) {
      return std::nullopt;
    } else {
      break;
    }
  }
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

}  // namespace quilmark
