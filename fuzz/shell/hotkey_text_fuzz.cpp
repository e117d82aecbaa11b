// Any hotkey of a settings file and any pattern of a translation: there is a text, within the length
// that the system has room for.
#include "shell/app/hotkey_text.h"

#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

std::u16string NameOfFew(uint32_t key) { return key < 16 ? u"Key" : u""; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input = InputOf(data, size);
  const auto modifiers = input.Take<uint32_t>(), key = input.Take<uint32_t>();
  const std::u16string text = HotkeyDisplayText(modifiers, key, NameOfFew);
  const auto plusses = static_cast<size_t>(std::count(text.begin(), text.end(), u'+'));
  Require(plusses == static_cast<size_t>(__builtin_popcount(modifiers & 15)) && !text.ends_with(u'+'));

  const std::u16string pattern = UnitsOf(input.rest);
  const std::u16string tip = TrayTipText(pattern, text);
  const size_t place = pattern.find(u"{0}");
  const size_t whole =
      pattern.size() + text.size() - (place == pattern.npos ? 0 : 3) + (place == pattern.npos ? 1 : 0);
  Require(tip.size() == std::min<size_t>(whole, 127));
  Require(tip.starts_with(pattern.substr(0, std::min<size_t>(place, tip.size()))));
  return 0;
}
