#include "search/filter/filter_categories.h"

#include <algorithm>

#include "config/config_directory.h"
#include "config/extension_list.h"
#include "config/settings_file.h"
#include "config/translate.h"
#include "platform/files.h"
#include "platform/published.h"
#include "platform/text.h"
#include "platform/text_file.h"

namespace quilmark {

namespace {

struct DefaultCategory {
  std::u16string_view chinese, english, extensions;
};
constexpr DefaultCategory kDefaultCategories[] = {
    {u"所有文件", u"All Files", u""},
    {u"文件夹", u"Folders", u".dir"},
    {u"文档", u"Documents", u".doc,.docx,.pdf,.txt,.xls,.xlsx,.ppt,.pptx,.md,.csv"},
    {u"图片", u"Images", u".jpg,.jpeg,.png,.gif,.bmp,.webp,.ico,.svg,.tif,.psd"},
    {u"压缩包", u"Archives", u".zip,.rar,.7z,.tar,.gz,.iso,.cab"},
    {u"应用程序", u"Applications", u".exe,.msi,.bat,.cmd,.dll,.sys,.ps1"},
    {u"视频", u"Videos", u".mp4,.mkv,.avi,.mov,.wmv,.flv,.rmvb,.m3u8"},
    {u"音频", u"Audio", u".mp3,.wav,.flac,.aac,.ogg,.m4a"},
};

Published<std::shared_ptr<const FilterTable>> categoriesInForce{
    "filter categories", std::make_shared<const FilterTable>(DefaultCategories(false))};

constexpr std::u16string_view kMainFile = u"filters.ini", kBackupFile = u"filters.bak";

std::u16string LanguageFile(std::u16string_view language) {
  if (language.empty()) return std::u16string(kMainFile);
  std::u16string folded = FoldText(language);
  std::replace(folded.begin(), folded.end(), u' ', u'_');
  return u"filters." + folded + u".ini";
}

// Empty where the file cannot be read or has no category.
FilterTable ReadTable(std::u16string_view name) { return ReadCategories(ReadSettingsFile(name)); }

// Nothing over a file that is there and could not be read.
bool WriteTable(std::u16string_view name, const FilterTable& categories) {
  return WriteSettingsFile(name, CategoriesText(categories));
}

// Copies the file if it holds `categories`, and not what a write left that failed on the way.
void CopyToBackup(std::u16string_view name, const FilterTable& categories) {
  const auto bytes = ReadFileBytes(ConfigPath(name));
  if (!bytes || ReadCategories(DecodeText(*bytes)) != categories) return;
  const std::u16string backup = ConfigPath(kBackupFile);
  if (ReadFileBytes(backup) == bytes) return;
  (void)WriteFileBytes(backup, *bytes);  // a copy that fails is made anew at the next start
}

// A file that another language has left behind.
bool IsLeftover(const FilterTable& categories, bool chinese) {
  return !chinese && categories.front().label == kDefaultCategories[0].chinese;
}

// True if there was none.
bool AddFolderCategory(FilterTable& categories) {
  if (std::any_of(categories.begin(), categories.end(), IsFolderCategory)) return false;
  const FilterCategory folders = {TranslateOr(u"Filter_Folders", u"Folders"), {u".dir"}};
  categories.insert(categories.begin() + (categories.empty() ? 0 : 1), folders);
  return true;
}

// The table of a file that was read well, with what it lacks.
FilterTable Adopt(const FilterTable& read, std::u16string_view name, bool chinese) {
  FilterTable categories = IsLeftover(read, chinese) ? DefaultCategories(chinese) : read;
  AddFolderCategory(categories);
  const bool isKept = categories == read || WriteTable(name, categories);
  CopyToBackup(name, isKept ? categories : read);
  return categories;
}

}  // namespace

bool IsFolderCategory(const FilterCategory& category) {
  return std::any_of(category.extensions.begin(), category.extensions.end(),
                     [](const std::u16string& one) { return one == u".dir" || one == u".folder"; });
}

FilterTable DefaultCategories(bool chinese) {
  FilterTable categories;
  for (const DefaultCategory& one : kDefaultCategories) {
    categories.push_back(
        {std::u16string(chinese ? one.chinese : one.english), ParseExtensionList(one.extensions)});
  }
  return categories;
}

FilterTable ReadCategories(std::u16string_view text) {
  FilterTable categories;
  while (!text.empty()) {
    const size_t end = std::min(text.find(u'\n'), text.size());
    const std::u16string_view line = TrimText(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    const auto pair = SplitKeyValue(line);
    if (line.starts_with(u'#') || !pair || pair->key.empty()) continue;
    categories.push_back({std::u16string(pair->key), ParseExtensionList(pair->value)});
  }
  return categories;
}

std::u16string CategoriesText(const FilterTable& categories) {
  std::u16string text;
  for (const FilterCategory& category : categories)
    text += category.label + u"=" + JoinExtensionList(category.extensions) + u"\n";
  return text;
}

std::shared_ptr<const FilterTable> CurrentCategories() { return categoriesInForce.Get(); }

void InstallCategories(FilterTable categories) {
  auto installed = std::make_shared<const FilterTable>(std::move(categories));
  categoriesInForce.Change([&installed](auto& table) { table = std::move(installed); });
}

void LoadFilterCategories(std::u16string_view language, bool chinese) {
  const std::u16string primary = LanguageFile(language);
  for (const std::u16string_view name : {std::u16string_view(primary), kMainFile}) {
    if (const FilterTable categories = ReadTable(name); !categories.empty()) {
      return InstallCategories(Adopt(categories, name, chinese));
    }
  }
  FilterTable categories = ReadTable(kBackupFile);
  // Neither the backup nor the defaults must come before a table that can be read the next time.
  const bool isKept =
      !IsUnreadSettingsFile(kMainFile) && (!categories.empty() || !IsUnreadSettingsFile(kBackupFile));
  if (categories.empty()) categories = DefaultCategories(chinese);
  AddFolderCategory(categories);
  if (isKept) WriteTable(primary, categories);
  InstallCategories(std::move(categories));
}

std::u16string PathOfFilterFile(bool chinese) {
  std::u16string path = ConfigPath(kMainFile);
  if (IsMissingPath(path)) WriteTable(kMainFile, DefaultCategories(chinese));
  return path;
}

bool ResetFilterCategories(std::u16string_view language, bool chinese) {
  const std::u16string primary = LanguageFile(language);
  const FilterTable defaults = DefaultCategories(chinese);
  return WriteTable(primary, defaults) && (primary == kMainFile || WriteTable(kMainFile, defaults));
}

FilterTable ReadFilterCategories(std::u16string_view language, bool chinese) {
  FilterTable categories;
  const std::u16string primary = LanguageFile(language);
  for (const std::u16string_view name : {std::u16string_view(primary), kMainFile, kBackupFile}) {
    if (categories.empty()) categories = ReadTable(name);
  }
  if (categories.empty()) categories = DefaultCategories(chinese);
  AddFolderCategory(categories);
  return categories;
}

}  // namespace quilmark
