#include "platform/posix/user_dirs.h"

#include <algorithm>

namespace quilmark {

namespace {

constexpr std::string_view kHome = "$HOME";

std::string_view TakeLine(std::string_view& text) {
  const size_t length = std::min(text.find('\n'), text.size());
  const std::string_view line = text.substr(0, length);
  text.remove_prefix(std::min(length + 1, text.size()));
  return line;
}

void SkipBlanks(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
}

bool Skip(std::string_view& text, std::string_view what) {
  if (!text.starts_with(what)) return false;
  text.remove_prefix(what.size());
  return true;
}

std::string_view WithoutTrailingSlashes(std::string_view path) {
  while (path.ends_with('/')) path.remove_suffix(1);
  return path;
}

// What stands before the closing quote, its backslashes taken out; empty without a closing quote.
std::optional<std::string> Unquoted(std::string_view text) {
  std::string value;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"') return value;
    if (text[i] == '\\' && ++i == text.size()) break;
    value.push_back(text[i]);
  }
  return std::nullopt;
}

// The value that `line` gives to `key`; empty for any other line.
std::optional<std::string> ValueOfLine(std::string_view line, std::string_view key,
                                       std::string_view home) {
  SkipBlanks(line);
  if (!Skip(line, key)) return std::nullopt;
  SkipBlanks(line);
  if (!Skip(line, "=")) return std::nullopt;
  SkipBlanks(line);
  if (!Skip(line, "\"")) return std::nullopt;
  const bool isBelowHome = Skip(line, kHome);
  const std::optional<std::string> value = Unquoted(line);
  if (!value) return std::nullopt;
  const bool isWhole = value->starts_with('/') || (isBelowHome && value->empty());
  if (!isWhole) return std::nullopt;
  return isBelowHome ? std::string(home) + *value : *value;
}

}  // namespace

std::optional<std::string> FindUserDir(std::string_view text, std::string_view key,
                                       std::string_view home) {
  home = WithoutTrailingSlashes(home);
  std::optional<std::string> folder;
  while (!text.empty()) {
    if (std::optional<std::string> value = ValueOfLine(TakeLine(text), key, home))
      folder = std::move(value);
  }
  if (folder && WithoutTrailingSlashes(*folder) == home) return std::nullopt;
  return folder;
}

}  // namespace quilmark
