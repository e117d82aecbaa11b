// Character references of XML.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace quilmark {

// The number of the character that stands for "&name;": one of the five names of XML, or a number in
// decimal or hexadecimal digits of at most 14 places. Empty for anything else.
template <typename Unit>
[[nodiscard]] std::optional<uint64_t> ValueOfEntity(std::basic_string_view<Unit> name) {
  struct Named {
    std::string_view name;
    char value;
  };
  constexpr std::array<Named, 5> kNames{
      {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}}};
  const auto isNamed = [&](std::string_view other) {
    if (name.size() != other.size()) return false;
    for (size_t i = 0; i < name.size(); ++i) {
      if (name[i] != static_cast<Unit>(other[i])) return false;
    }
    return true;
  };
  for (const Named& named : kNames) {
    if (isNamed(named.name)) return static_cast<unsigned char>(named.value);
  }
  if (name.empty() || name[0] != '#') return std::nullopt;
  name.remove_prefix(1);
  const bool isHexadecimal = !name.empty() && (name[0] == 'x' || name[0] == 'X');
  if (isHexadecimal) name.remove_prefix(1);
  if (name.empty() || name.size() > 14) return std::nullopt;
  uint64_t value = 0;
  for (const Unit unit : name) {
    const bool isLetter = (unit >= 'a' && unit <= 'f') || (unit >= 'A' && unit <= 'F');
    if (!(unit >= '0' && unit <= '9') && !(isHexadecimal && isLetter)) return std::nullopt;
    const uint64_t digit =
        isLetter ? (static_cast<uint64_t>(unit) | 0x20) - 'a' + 10 : static_cast<uint64_t>(unit) - '0';
    value = value * (isHexadecimal ? 16 : 10) + digit;
  }
  return value;
}

}  // namespace quilmark
