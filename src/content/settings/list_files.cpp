#include "content/settings/list_files.h"

#include <algorithm>
#include <array>
#include <optional>

#include "config/extension_list.h"
#include "platform/text.h"
#include "platform/text_file.h"
#include "platform/utf.h"

namespace quilmark {

namespace {

constexpr size_t kLineLimit = 2047;

constexpr std::array<std::u16string_view, 9> kZipExts{u".docx", u".pptx", u".xlsx", u".xlsm", u".docm",
                                                      u".pptm", u".odt",  u".ods",  u".odp"};
constexpr std::array<std::u16string_view, 17> kInnerPatterns{u"word/document.xml",
                                                             u"word/footnotes.xml",
                                                             u"word/endnotes.xml",
                                                             u"word/comments.xml",
                                                             u"word/header*.xml",
                                                             u"word/footer*.xml",
                                                             u"xl/sharedstrings.xml",
                                                             u"xl/worksheets/sheet*.xml",
                                                             u"xl/comments*.xml",
                                                             u"ppt/slides/slide*.xml",
                                                             u"ppt/notesslides/notesslide*.xml",
                                                             u"ppt/comments*.xml",
                                                             u"docprops/core.xml",
                                                             u"docprops/app.xml",
                                                             u"content.xml",
                                                             u"styles.xml",
                                                             u"*.xml"};
constexpr std::array<std::u16string_view, 8> kPickerExts{u".txt",  u".log", u".md",   u".csv",
                                                         u".json", u".xml", u".html", u".htm"};

std::u16string_view TrimBothEnds(std::u16string_view text) {
  const size_t first = text.find_first_not_of(u" \t\r\n");
  return first == std::u16string_view::npos ? std::u16string_view() : TrimText(text.substr(first));
}

void AddItems(std::u16string_view line, std::vector<std::u16string>& items) {
  for (;;) {
    const size_t comma = line.find(u',');
    items.emplace_back(TrimBothEnds(line.substr(0, comma)));
    if (comma == std::u16string_view::npos) return;
    line.remove_prefix(comma + 1);
  }
}

}  // namespace

const ListFile& ZipExtsFile() {
  static constexpr ListFile kFile{
      u"content_zip_exts.ini", u"exts=",
      u"# Content search: extensions below are read as ZIP (Office Open XML / ODF).\n"
      u"# Sister file content_zip_inner_patterns.ini controls which inner entries are scanned.\n"
      u"# 同目录的 content_zip_inner_patterns.ini 决定扫描压缩包内的哪些条目。\n"
      u"# Comma-separated; optional prefix exts=\n"
      u"# 内容搜索：下列扩展名的文件按 ZIP 读取（Office Open XML / ODF）。\n",
      kZipExts};
  return kFile;
}

const ListFile& InnerPatternsFile() {
  static constexpr ListFile kFile{
      u"content_zip_inner_patterns.ini", u"patterns=",
      u"# ZIP internal paths (forward slashes). Multiple patterns per line: comma-separated.\n"
      u"# Wildcard * matches any substring. Example: *.xml matches every .xml entry in the archive.\n"
      u"# ZIP 内部路径（正斜杠），一行可写多个，以逗号分隔；通配符 * 匹配任意子串，例如 *.xml "
      u"匹配压缩包内所有 .xml 条目。\n",
      kInnerPatterns};
  return kFile;
}

const ListFile& PickerExtsFile() {
  static constexpr ListFile kFile{
      u"content_search_exts.ini", u"exts=",
      u"# Content search selectable extensions (edit this file to add/remove types).\n"
      u"# 内容搜索可选的扩展名：每行一个或以逗号分隔，重新打开选择窗口后生效。\n"
      u"# Example / 示例: .txt,.log,.md  或每行写 .pdf\n",
      kPickerExts};
  return kFile;
}

std::vector<std::u16string> ListItems(std::u16string_view text, const ListFile& file) {
  std::vector<std::u16string> items;
  TextLines lines{.text = text, .limit = kLineLimit};
  while (const auto piece = NextLine(lines)) {
    std::u16string_view line = TrimBothEnds(*piece);
    if (line.empty() || line.starts_with(u'#')) continue;
    if (line.starts_with(file.key)) line = TrimBothEnds(line.substr(file.key.size()));
    AddItems(line, items);
  }
  return items;
}

std::vector<std::u16string> ExtensionItems(std::u16string_view text, const ListFile& file) {
  std::vector<std::u16string> extensions;
  for (const std::u16string& item : ListItems(text, file)) {
    std::u16string extension = FoldText(item);
    if (!extension.starts_with(u'.')) extension.insert(0, 1, u'.');
    if (extension.size() > 1) extensions.push_back(std::move(extension));
  }
  return extensions;
}

std::vector<std::string> PatternItems(std::u16string_view text) {
  std::vector<std::string> patterns;
  for (const std::u16string& item : ListItems(text, InnerPatternsFile())) {
    if (item.empty()) continue;
    std::string& pattern = patterns.emplace_back(ToUtf8(item));
    for (char& byte : pattern) {
      if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte + 32);
    }
  }
  return patterns;
}

std::vector<std::u16string> WithoutRepeats(const std::vector<std::u16string>& items) {
  std::vector<std::u16string> kept;
  for (const std::u16string& item : items) {
    const auto isEqual = [&item](const std::u16string& other) { return EqualNoCase(item, other); };
    if (std::none_of(kept.begin(), kept.end(), isEqual)) kept.push_back(item);
  }
  return kept;
}

std::u16string ListText(const ListFile& file, const std::vector<std::u16string>& items) {
  return std::u16string(file.comments) + std::u16string(file.key) + JoinExtensionList(items) + u"\n";
}

std::u16string DefaultPatternsText() {
  std::u16string text(InnerPatternsFile().comments);
  for (const std::u16string_view pattern : kInnerPatterns) text.append(pattern).append(u"\n");
  return text;
}

std::vector<std::u16string> DefaultItems(const ListFile& file) {
  return {file.defaults.begin(), file.defaults.end()};
}

}  // namespace quilmark
