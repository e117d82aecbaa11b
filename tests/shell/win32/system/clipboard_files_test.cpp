#include "shell/win32/system/clipboard_files.h"

#include <gtest/gtest.h>

#include <shellapi.h>

#include "platform/win32/wide.h"
#include "shell/win32/controls/control_window.h"

namespace quilmark {
namespace {

using Paths = std::vector<std::u16string>;

// As a program that pastes reads it.
struct Pasted {
  Paths files;
  uint32_t effect = 0;
  std::u16string text;
};

Paths FilesOf(HDROP drop) {
  Paths files;
  const UINT count = DragQueryFileW(drop, 0xFFFF'FFFF, nullptr, 0);
  for (UINT i = 0; i < count; ++i) {
    std::u16string path(DragQueryFileW(drop, i, nullptr, 0), u'\0');
    DragQueryFileW(drop, i, Wide(path.data()), static_cast<UINT>(path.size() + 1));
    files.push_back(std::move(path));
  }
  return files;
}

Pasted Paste(HWND owner) {
  Pasted pasted;
  EXPECT_TRUE(OpenClipboard(owner));
  if (const HANDLE drop = GetClipboardData(CF_HDROP)) pasted.files = FilesOf(static_cast<HDROP>(drop));
  if (const HANDLE effect = GetClipboardData(DropEffectFormat())) {
    EXPECT_GE(GlobalSize(effect), sizeof(uint32_t));
    pasted.effect = *static_cast<const uint32_t*>(GlobalLock(effect));
    GlobalUnlock(effect);
  }
  if (const HANDLE text = GetClipboardData(CF_UNICODETEXT)) {
    pasted.text = FromWide(static_cast<const wchar_t*>(GlobalLock(text)));
    GlobalUnlock(text);
  }
  CloseClipboard();
  return pasted;
}

TEST(ClipboardFiles, ArePastedAsTheyWereCopied) {
  const ControlWindow window(96);
  const Paths paths = {u"C:\\dir\\a b.txt", u"D:\\\u0416\u65b0\U0001F600",
                       u"C:\\" + std::u16string(300, u'x')};
  for (const DropEffect effect : {DropEffect::kCopy, DropEffect::kMove}) {
    ASSERT_TRUE(PutFilesOnClipboard(window.Handle(), paths, effect));
    const Pasted pasted = Paste(window.Handle());
    EXPECT_EQ(pasted.files, paths);
    EXPECT_EQ(pasted.effect, static_cast<uint32_t>(effect));
  }
}

TEST(ClipboardFiles, ReplaceWhatWasThere) {
  const ControlWindow window(96);
  ASSERT_TRUE(PutTextOnClipboard(window.Handle(), u"C:\\a\r\nC:\\b"));
  EXPECT_EQ(Paste(window.Handle()).text, u"C:\\a\r\nC:\\b");
  ASSERT_TRUE(PutFilesOnClipboard(window.Handle(), {u"C:\\a"}, DropEffect::kCopy));
  EXPECT_EQ(Paste(window.Handle()).text, u"");
  ASSERT_TRUE(PutTextOnClipboard(window.Handle(), u""));
  EXPECT_EQ(Paste(window.Handle()).files, Paths{});
}

TEST(ClipboardFiles, FailWithoutAFileAndLeaveNothing) {
  const ControlWindow window(96);
  ASSERT_TRUE(PutTextOnClipboard(window.Handle(), u"before"));
  EXPECT_FALSE(PutFilesOnClipboard(window.Handle(), {}, DropEffect::kMove));
  const Pasted pasted = Paste(window.Handle());
  EXPECT_EQ(pasted.effect, 0u);
  EXPECT_EQ(pasted.text, u"");
}

TEST(ClipboardFiles, FailWhereAnotherHasTheClipboard) {
  const ControlWindow window(96), other(96);
  ASSERT_TRUE(OpenClipboard(other.Handle()));
  const bool isTaken = PutTextOnClipboard(window.Handle(), u"text");
  CloseClipboard();
  EXPECT_FALSE(isTaken);
}

TEST(GlobalBlock, IsEmptyWithoutBytes) {
  EXPECT_FALSE(GlobalBlock({}));
  EXPECT_FALSE(FilesBlock({}));
}

}  // namespace
}  // namespace quilmark
