#include "search/filter_categories.h"

#include <algorithm>
#include <mutex>

#include "config/config_directory.h"
#include "config/extension_list.h"
#include "config/translate.h"
#include "platform/files.h"
#include "platform/locks.h"
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

OrderedLock tableLock{LockRank::kLeaf, "filter categories"};
std::shared_ptr<const FilterTable> table = std::make_shared<FilterTable>(DefaultCategories(false));

std::u16string LanguagePath(std::u16string_view language) {
  if (language.empty()) return ConfigPath(u"filters.ini");
  std::u16string folded = FoldText(language);
  std::replace(folded.begin(), folded.end(), u' ', u'_');
  return ConfigPath(u"filters." + folded + u".ini");
}

// Empty where the file cannot be read or has no category.
FilterTable ReadTable(const std::u16string& path) {
  return ReadCategories(ReadTextFile(path).value_or(u""));
}

void WriteTable(const std::u16string& path, const FilterTable& categories) {
  WriteTextFile(path, CategoriesText(categories));
}

void CopyToBackup(const std::u16string& path) {
  if (const auto bytes = ReadFileBytes(path)) WriteFileBytes(ConfigPath(u"filters.bak"), *bytes);
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

void EnsureFolderCategory(FilterTable& categories, const std::u16string& path) {
  if (AddFolderCategory(categories)) WriteTable(path, categories);
}

// The table of a file that was read well, with what it lacks.
FilterTable Adopt(FilterTable categories, const std::u16string& path, bool chinese) {
  if (IsLeftover(categories, chinese)) {
    categories = DefaultCategories(chinese);
    WriteTable(path, categories);
  } else {
    EnsureFolderCategory(categories, path);
  }
  CopyToBackup(path);
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

std::shared_ptr<const FilterTable> CurrentCategories() {
  const std::scoped_lock lock(tableLock);
  return table;
}

void InstallCategories(FilterTable categories) {
  auto installed = std::make_shared<const FilterTable>(std::move(categories));
  const std::scoped_lock lock(tableLock);
  table.swap(installed);
}

void LoadFilterCategories(std::u16string_view language, bool chinese) {
  const std::u16string primary = LanguagePath(language), main = ConfigPath(u"filters.ini");
  for (const std::u16string& path : {primary, main}) {
    if (FilterTable categories = ReadTable(path); !categories.empty()) {
      return InstallCategories(Adopt(std::move(categories), path, chinese));
    }
  }
  FilterTable categories = ReadTable(ConfigPath(u"filters.bak"));
  if (categories.empty()) categories = DefaultCategories(chinese);
  WriteTable(primary, categories);
  EnsureFolderCategory(categories, primary);
  InstallCategories(std::move(categories));
}

FilterTable ReadFilterCategories(std::u16string_view language, bool chinese) {
  FilterTable categories;
  for (const std::u16string& path :
       {LanguagePath(language), ConfigPath(u"filters.ini"), ConfigPath(u"filters.bak")}) {
    if (categories.empty()) categories = ReadTable(path);
  }
  if (categories.empty()) categories = DefaultCategories(chinese);
  AddFolderCategory(categories);
  return categories;
}

}  // namespace quilmark
