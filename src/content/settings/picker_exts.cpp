#include "content/settings/picker_exts.h"

#include <algorithm>
#include <optional>

#include "config/config_directory.h"
#include "config/extension_list.h"
#include "config/window_settings.h"
#include "content/settings/list_files.h"
#include "platform/files.h"
#include "platform/text.h"
#include "platform/text_file.h"

namespace quilmark {

std::vector<std::u16string> LoadPickerExts() {
  const ListFile& file = PickerExtsFile();
  const std::optional<std::u16string> text = ReadTextFile(ConfigPath(file.name));
  std::vector<std::u16string> exts;
  if (text) exts = WithoutRepeats(ExtensionItems(*text, file));
  if (!exts.empty()) return exts;
  SavePickerExts(DefaultItems(file));
  return DefaultItems(file);
}

void SavePickerExts(const std::vector<std::u16string>& exts) {
  const ListFile& file = PickerExtsFile();
  [[maybe_unused]] const bool isWritten = WriteFileBytes(
      ConfigPath(file.name), TextFileBytes(ListText(file, exts)), Flushing::kLeftToSystem);
}

std::vector<std::u16string> SelectedPickerExts() {
  const std::vector<std::u16string> offered = LoadPickerExts();
  std::vector<std::u16string> selected;
  for (const std::u16string& ext : CurrentWindowSettings.contentSearchExts) {
    const auto isEqual = [&ext](const std::u16string& other) { return EqualNoCase(ext, other); };
    if (std::any_of(offered.begin(), offered.end(), isEqual)) selected.push_back(ext);
  }
  selected = WithoutRepeats(selected);
  return selected.empty() ? offered : selected;
}

std::vector<std::u16string> ParseExtList(std::u16string_view text) { return ParseExtensionList(text); }

}  // namespace quilmark
