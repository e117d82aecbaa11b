#include "content/settings/list_files.h"

#include <gtest/gtest.h>

#include "platform/utf.h"

namespace quilmark {
namespace {

using Texts = std::vector<std::u16string>;

Texts Exts(std::u16string_view text) { return ExtensionItems(text, ZipExtsFile()); }

TEST(ListFiles, TakeExtensionsInAnyForm) {
  EXPECT_EQ(Exts(u"exts=.DOC, rtf"), (Texts{u".doc", u".rtf"}));
  EXPECT_EQ(Exts(u"\texts=  .a ,\n b,,c \n\n  .D"), (Texts{u".a", u".b", u".c", u".d"}));
  EXPECT_EQ(Exts(u"exts=\nexts=.a\n.b,exts=c"), (Texts{u".a", u".b", u".exts=c"}));
  EXPECT_EQ(Exts(u"EXTS=.a"), (Texts{u".exts=.a"}));
  EXPECT_EQ(Exts(u".,. ,,"), Texts{});
  EXPECT_EQ(Exts(u".\u00C4,.\u0416"), (Texts{u".\u00E4", u".\u0436"}));
}

TEST(ListFiles, PassOverComments) {
  EXPECT_EQ(Exts(u"#exts=.pdf\n  # .doc\n.txt,#.log"), (Texts{u".txt", u".#.log"}));
}

TEST(ListFiles, TakePatternsInLowerCase) {
  EXPECT_EQ(PatternItems(u"Word/Document.xml\npatterns= A*.XML , ,\u00C4*\n#x\n*"),
            (std::vector<std::string>{"word/document.xml", "a*.xml", "\xC3\x84*", "*"}));
}

TEST(ListFiles, TakeLongLinesInPieces) {
  // A buffer of 2,048 units less its NUL.
  EXPECT_EQ(Exts(u"." + std::u16string(2046, u'a') + u"b"),
            (Texts{u"." + std::u16string(2046, u'a'), u".b"}));
  EXPECT_EQ(Exts(u"." + std::u16string(2045, u'a') + u"\nb"),
            (Texts{u"." + std::u16string(2045, u'a'), u".b"}));
  EXPECT_EQ(Exts(u"#" + std::u16string(2046, u'x') + u".a"), (Texts{u".a"}));
}

TEST(ListFiles, DropRepeatsButForCase) {
  EXPECT_EQ(WithoutRepeats({u".a", u".B", u".A", u".b", u".c"}), (Texts{u".a", u".B", u".c"}));
}

TEST(ListFiles, AreWrittenWithTheirComments) {
  EXPECT_EQ(ToUtf8(ListText(ZipExtsFile(), DefaultItems(ZipExtsFile()))),
            "# Content search: extensions below are read as ZIP (Office Open XML / ODF).\n"
            "# Sister file content_zip_inner_patterns.ini controls which inner entries are scanned.\n"
            "# 同目录的 content_zip_inner_patterns.ini 决定扫描压缩包内的哪些条目。\n"
            "# Comma-separated; optional prefix exts=\n"
            "# 内容搜索：下列扩展名的文件按 ZIP 读取（Office Open XML / ODF）。\n"
            "exts=.docx,.pptx,.xlsx,.xlsm,.docm,.pptm,.odt,.ods,.odp\n");
  EXPECT_EQ(
      ToUtf8(DefaultPatternsText()),
      "# ZIP internal paths (forward slashes). Multiple patterns per line: comma-separated.\n"
      "# Wildcard * matches any substring. Example: *.xml matches every .xml entry in the archive.\n"
      "# ZIP 内部路径（正斜杠），一行可写多个，以逗号分隔；通配符 * 匹配任意子串，例如 *.xml "
      "匹配压缩包内所有 .xml "
      "条目。\n"
      "word/document.xml\nword/footnotes.xml\nword/endnotes.xml\nword/comments.xml\nword/header*.xml\n"
      "word/footer*.xml\nxl/sharedstrings.xml\nxl/worksheets/sheet*.xml\nxl/comments*.xml\n"
      "ppt/slides/slide*.xml\nppt/notesslides/notesslide*.xml\nppt/comments*.xml\ndocprops/core.xml\n"
      "docprops/app.xml\ncontent.xml\nstyles.xml\n*.xml\n");
  EXPECT_EQ(ToUtf8(ListText(PickerExtsFile(), DefaultItems(PickerExtsFile()))),
            "# Content search selectable extensions (edit this file to add/remove types).\n"
            "# 内容搜索可选的扩展名：每行一个或以逗号分隔，重新打开选择窗口后生效。\n"
            "# Example / 示例: .txt,.log,.md  或每行写 .pdf\n"
            "exts=.txt,.log,.md,.csv,.json,.xml,.html,.htm\n");
}

TEST(ListFiles, ReadWhatTheyWrite) {
  for (const ListFile* file : {&ZipExtsFile(), &PickerExtsFile()}) {
    EXPECT_EQ(ExtensionItems(ListText(*file, DefaultItems(*file)), *file), DefaultItems(*file));
  }
  Texts patterns;
  for (const std::string& pattern : PatternItems(DefaultPatternsText()))
    patterns.push_back(FromUtf8(pattern));
  EXPECT_EQ(patterns, DefaultItems(InnerPatternsFile()));
}

}  // namespace
}  // namespace quilmark
