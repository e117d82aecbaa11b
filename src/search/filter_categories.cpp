#include "search/filter_categories.h"

#include <algorithm>
#include <mutex>

#include "config/config_directory.h"
#include "config/extension_list.h"
#include "config/settings_file.h"
#include "config/translate.h"
#include "platform/files.h"
#include "platform/locks.h"
#include "platform/text.h"
#include "platform/text_file.h"

namespace quilmark {

namespace {

struct DefaultRow {
  std::u16string_view chinese, english, extensions;
};
constexpr DefaultRow kDefaultRows[] = {
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

constexpr std::u16string_view kMainFile = u"filters.ini", kBackupFile = u"filters.bak";

std::u16string LanguageFile(std::u16string_view language) {
  if (language.empty()) return std::u16string(kMainFile);
  std::u16string folded = FoldText(language);
  std::replace(folded.begin(), folded.end(), u' ', u'_');
  return u"filters." + folded + u".ini";
}

// Empty where the file cannot be read or has no row.
FilterTable ReadTable(std::u16string_view name) { return ReadCategories(ReadSettingsFile(name)); }

// Nothing over a file that is there and could not be read.
bool WriteTable(std::u16string_view name, const FilterTable& rows) {
  return WriteSettingsFile(name, CategoriesText(rows));
}

// Copies the file if it holds `rows`, and not what a write left that failed on the way.
void CopyToBackup(std::u16string_view name, const FilterTable& rows) {
  const auto bytes = ReadFileBytes(ConfigPath(name));
  if (bytes && ReadCategories(DecodeText(*bytes)) == rows)
    WriteFileBytes(ConfigPath(kBackupFile), *bytes);
}

// A file that another language has left behind.
bool IsLeftover(const FilterTable& rows, bool chinese) {
  return !chinese && rows.front().label == kDefaultRows[0].chinese;
}

// True if there was none.
bool AddFolderRow(FilterTable& rows) {
  if (std::any_of(rows.begin(), rows.end(), IsFolderRow)) return false;
  const FilterCategory folders = {TranslateOr(u"Filter_Folders", u"Folders"), {u".dir"}};
  rows.insert(rows.begin() + (rows.empty() ? 0 : 1), folders);
  return true;
}

// The table of a file that was read well, with what it lacks.
FilterTable Adopt(const FilterTable& read, std::u16string_view name, bool chinese) {
  FilterTable rows = IsLeftover(read, chinese) ? DefaultCategories(chinese) : read;
  AddFolderRow(rows);
  const bool isKept = rows == read || WriteTable(name, rows);
  CopyToBackup(name, isKept ? rows : read);
  return rows;
}

}  // namespace

bool IsFolderRow(const FilterCategory& category) {
  return std::any_of(category.extensions.begin(), category.extensions.end(),
                     [](const std::u16string& one) { return one == u".dir" || one == u".folder"; });
}

FilterTable DefaultCategories(bool chinese) {
  FilterTable rows;
  for (const DefaultRow& row : kDefaultRows) {
    rows.push_back(
        {std::u16string(chinese ? row.chinese : row.english), ParseExtensionList(row.extensions)});
  }
  return rows;
}

FilterTable ReadCategories(std::u16string_view text) {
  FilterTable rows;
  while (!text.empty()) {
    const size_t end = std::min(text.find(u'\n'), text.size());
    const std::u16string_view line = TrimText(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    const auto pair = SplitKeyValue(line);
    if (line.starts_with(u'#') || !pair || pair->key.empty()) continue;
    rows.push_back({std::u16string(pair->key), ParseExtensionList(pair->value)});
  }
  return rows;
}

std::u16string CategoriesText(const FilterTable& rows) {
  std::u16string text;
  for (const FilterCategory& row : rows)
    text += row.label + u"=" + JoinExtensionList(row.extensions) + u"\n";
  return text;
}

std::shared_ptr<const FilterTable> CurrentCategories() {
  const std::scoped_lock lock(tableLock);
  return table;
}

void InstallCategories(FilterTable rows) {
  auto installed = std::make_shared<const FilterTable>(std::move(rows));
  const std::scoped_lock lock(tableLock);
  table.swap(installed);
}

void LoadFilterCategories(std::u16string_view language, bool chinese) {
  const std::u16string primary = LanguageFile(language);
  for (const std::u16string_view name : {std::u16string_view(primary), kMainFile}) {
    if (const FilterTable rows = ReadTable(name); !rows.empty()) {
      return InstallCategories(Adopt(rows, name, chinese));
    }
  }
  FilterTable rows = ReadTable(kBackupFile);
  // The defaults must not come before a table that can be read the next time.
  const bool isKept =
      !rows.empty() || (!IsUnreadSettingsFile(kMainFile) && !IsUnreadSettingsFile(kBackupFile));
  if (rows.empty()) rows = DefaultCategories(chinese);
  AddFolderRow(rows);
  if (isKept) WriteTable(primary, rows);
  InstallCategories(std::move(rows));
}

FilterTable ReadFilterCategories(std::u16string_view language, bool chinese) {
  FilterTable rows;
  const std::u16string primary = LanguageFile(language);
  for (const std::u16string_view name : {std::u16string_view(primary), kMainFile, kBackupFile}) {
    if (rows.empty()) rows = ReadTable(name);
  }
  if (rows.empty()) rows = DefaultCategories(chinese);
  AddFolderRow(rows);
  return rows;
}

}  // namespace quilmark
