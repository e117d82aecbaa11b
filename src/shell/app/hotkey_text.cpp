#include "shell/app/hotkey_text.h"

namespace quilmark {

namespace {

struct Modifier {
  uint32_t bit;
  std::u16string_view text;
};
constexpr Modifier kModifiers[] = {{2, u"Ctrl+"}, {1, u"Alt+"}, {4, u"Shift+"}, {8, u"Win+"}};

constexpr size_t kLongestTip = 127;  // units, as NOTIFYICONDATAW has room for

std::u16string PlainName(uint32_t key) {
  const bool isLetterOrDigit = (key >= u'A' && key <= u'Z') || (key >= u'0' && key <= u'9');
  return isLetterOrDigit ? std::u16string(1, static_cast<char16_t>(key)) : u"???";
}

}  // namespace

std::u16string HotkeyDisplayText(uint32_t modifiers, uint32_t key, KeyNamer nameOf) {
  std::u16string text;
  for (const Modifier& modifier : kModifiers) {
    if ((modifiers & modifier.bit) != 0) text += modifier.text;
  }
  const std::u16string name = nameOf(key);
  return text + (name.empty() ? PlainName(key) : name);
}

std::u16string TrayTipText(std::u16string pattern, std::u16string_view hotkey) {
  const size_t place = pattern.find(u"{0}");
  if (place == std::u16string::npos) {
    pattern.append(u" ").append(hotkey);
  } else {
    pattern.replace(place, 3, hotkey);
  }
  if (pattern.size() > kLongestTip) pattern.resize(kLongestTip);
  return pattern;
}

}  // namespace quilmark
