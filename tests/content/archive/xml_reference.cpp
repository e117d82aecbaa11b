#include "content/archive/xml_reference.h"

#include <cstdint>
#include <cstdlib>
#include <set>

namespace quilmark {

namespace {

bool IsByteSpace(char c) { return c == 9 || c == 10 || c == 13 || c == 32 || c == '\xA0'; }

bool IsWide(char16_t c) {
  static const std::set<char16_t> spaces = [] {
    std::set<char16_t> set{9,    10,     11,     12,     13,     32,     0x85,
                           0xA0, 0x1680, 0x2028, 0x2029, 0x202F, 0x205F, 0x3000};
    for (char16_t c = 0x2000; c <= 0x200A; ++c) set.insert(c);
    return set;
  }();
  return spaces.contains(c);
}

bool IsSpaceOf(char c) { return IsByteSpace(c); }
bool IsSpaceOf(char16_t c) { return IsWide(c); }

template <typename Text>
void AppendBlank(Text& out) {
  if (!out.empty() && out.back() != ' ') out.push_back(' ');
}

template <typename Text>
Text StripBlanks(Text text) {
  while (!text.empty() && text.back() == ' ') text.pop_back();
  while (!text.empty() && text.front() == ' ') text.erase(text.begin());
  return text;
}

// -1: not recognised.
int64_t EntityValue(const std::string& name) {
  if (name == "amp") return '&';
  if (name == "lt") return '<';
  if (name == "gt") return '>';
  if (name == "quot") return '"';
  if (name == "apos") return '\'';
  if (name.size() < 2 || name[0] != '#') return -1;
  const bool isHex = name[1] == 'x' || name[1] == 'X';
  const std::string digits = name.substr(isHex ? 2 : 1);
  const std::string allowed = isHex ? "0123456789abcdefABCDEF" : "0123456789";
  if (digits.empty() || digits.find_first_not_of(allowed) != std::string::npos) return -1;
  return std::strtoll(digits.c_str(), nullptr, isHex ? 16 : 10);
}

// Reads the entity at xml[i] == '&' and moves behind it.
void Entity(std::string_view xml, size_t& i, std::string& out) {
  std::string name;
  size_t k = i + 1;
  while (k < xml.size() && xml[k] != ';') {
    if (name.size() < 15) name.push_back(xml[k]);
    ++k;
  }
  const bool hasEnd = k < xml.size();
  i = hasEnd ? k + 1 : k;
  if (!hasEnd) return;
  const int64_t value = EntityValue(name);
  if (value < 0 || value > 0x10FFFF) return;
  if (value < 0x80) {
    out += static_cast<char>(value);
  } else if (value < 0x800) {
    out += static_cast<char>(0xC0 + value / 64);
    out += static_cast<char>(0x80 + value % 64);
  } else if (value < 0x10000) {
    out += static_cast<char>(0xE0 + value / 4096);
    out += static_cast<char>(0x80 + value / 64 % 64);
    out += static_cast<char>(0x80 + value % 64);
  } else {
    out += static_cast<char>(0xF0 + value / 262144);
    out += static_cast<char>(0x80 + value / 4096 % 64);
    out += static_cast<char>(0x80 + value / 64 % 64);
    out += static_cast<char>(0x80 + value % 64);
  }
}

void Entity(std::u16string_view xml, size_t& i, std::u16string& out) {
  for (size_t k = i + 1; k < xml.size() && k <= i + 16; ++k) {
    if (xml[k] != ';') continue;
    std::string name;
    for (size_t n = i + 1; n < k; ++n)
      name.push_back(xml[n] < 0x80 ? static_cast<char>(xml[n]) : '\x01');
    const int64_t value = EntityValue(name);
    if (value <= 0 || value >= 0x10000) break;
    out.push_back(static_cast<char16_t>(value));
    i = k + 1;
    return;
  }
  out.push_back('&');
  ++i;
}

template <typename Text>
Text ReferenceRunText(std::basic_string_view<typename Text::value_type> xml) {
  Text out;
  bool inRun = false;
  size_t i = 0;
  while (i < xml.size()) {
    const auto c = xml[i];
    if (c == '<') {
      size_t end = i + 1;
      int quote = 0;
      for (; end < xml.size(); ++end) {
        if (quote == 0 && xml[end] == '>') break;
        if (quote == 0 && (xml[end] == '"' || xml[end] == '\'')) {
          quote = xml[end];
        } else if (quote != 0 && xml[end] == quote) {
          quote = 0;
        }
      }
      if (end == xml.size()) break;
      size_t p = i + 1;
      i = end + 1;
      while (p < end && IsSpaceOf(xml[p])) ++p;
      if (p < end && (xml[p] == '!' || xml[p] == '?')) continue;
      bool isClosing = false;
      if (p < end && xml[p] == '/') {
        isClosing = true;
        ++p;
      }
      std::string name;
      for (; p < end && xml[p] != '/' && xml[p] != '>' && !IsSpaceOf(xml[p]); ++p) {
        name.push_back(xml[p] > 0 && xml[p] < 0x80 ? static_cast<char>(std::tolower(xml[p])) : '\x01');
      }
      if (const size_t colon = name.rfind(':'); colon != std::string::npos) name.erase(0, colon + 1);
      // The last character before ">" that is neither white space nor ">".
      size_t last = end;
      do {
        --last;
      } while (IsSpaceOf(xml[last]) || xml[last] == '>');
      const bool isSelfClosed = xml[last] == '/';
      static const std::set<std::string> runs{"t", "v"};
      static const std::set<std::string> breaks{"p", "br", "cr", "tab", "tc", "tr", "row", "c"};
      if (runs.contains(name)) {
        inRun = !isClosing && !isSelfClosed;
      } else if (breaks.contains(name)) {
        AppendBlank(out);
      }
      continue;
    }
    if (!inRun) {
      ++i;
    } else if (c == '&') {
      Entity(xml, i, out);
    } else if (IsSpaceOf(c)) {
      AppendBlank(out);
      ++i;
    } else {
      out.push_back(c);
      ++i;
    }
  }
  return StripBlanks(out);
}

}  // namespace

std::u16string ReferenceRunTextWide(std::u16string_view xml) {
  return ReferenceRunText<std::u16string>(xml);
}

std::string ReferenceRunTextBytes(std::string_view xml) { return ReferenceRunText<std::string>(xml); }

std::string ReferenceStripAllTags(std::string_view xml) {
  std::string out;
  bool inTag = false, inCdata = false;
  size_t i = 0;
  const auto putText = [&](char c) {
    if (!IsByteSpace(c)) {
      out.push_back(c);
    } else if (out.empty() || out.back() != ' ') {
      out.push_back(' ');
    }
  };
  while (i < xml.size()) {
    const char c = xml[i];
    if (inCdata) {
      if (xml.substr(i, 3) == "]]>") {
        inCdata = false;
        i += 3;
      } else {
        putText(c);
        ++i;
      }
    } else if (c == '<') {
      if (xml.substr(i, 9) == "<![CDATA[") {
        inCdata = true;
        i += 9;
      } else {
        inTag = true;
        ++i;
      }
    } else if (inTag) {
      if (c == '>') inTag = false;
      ++i;
    } else if (c == '&') {
      Entity(xml, i, out);
    } else {
      putText(c);
      ++i;
    }
  }
  return StripBlanks(out);
}

}  // namespace quilmark
