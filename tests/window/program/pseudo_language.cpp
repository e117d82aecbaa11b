#include "window/program/pseudo_language.h"

#include "config/translate.h"

namespace quilmark {

namespace {

bool IsLetter(char16_t unit) { return (unit | 0x20) >= u'a' && (unit | 0x20) <= u'z'; }

// Length of what FormatText fills in at the start of `text`, such as "%llu"; 0 for none.
size_t FieldLength(std::u16string_view text) {
  if (text.size() < 2 || text[0] != u'%') return 0;
  size_t length = 1;
  while (length < text.size() && (text[length] == u'l' || text[length] == u'z')) ++length;
  return length + 1;
}

std::u16string Lengthened(std::u16string_view, std::u16string_view english) {
  std::u16string text = u"[" + std::u16string(english);
  for (size_t i = 0; i < (english.size() + 1) / 2; ++i) text += u"oemnu"[i % 5];
  return text + u"]";
}

// A letter of `alphabet` for every `lettersEach` of a word.
std::u16string Spelt(std::u16string_view english, std::u16string_view alphabet, size_t lettersEach) {
  std::u16string text;
  size_t inWord = 0;
  for (size_t i = 0; i < english.size(); ++i) {
    if (const size_t field = FieldLength(english.substr(i)); field != 0) {
      text += english.substr(i, field);
      i += field - 1;
      continue;
    }
    inWord = IsLetter(english[i]) ? inWord + 1 : 0;
    if (inWord == 0) text += english[i];
    if (inWord % lettersEach == 1 % lettersEach && inWord != 0) {
      text += alphabet[(english[i] + i) % alphabet.size()];
    }
  }
  return text;
}

std::u16string InIdeographs(std::u16string_view, std::u16string_view english) {
  return Spelt(english, u"文件搜索结果大小修改日期路径全部今天", 2);
}

std::u16string RightToLeft(std::u16string_view, std::u16string_view english) {
  return Spelt(english,
               u"\x0645\x0644\x0641\x0628\x062D\x062B\x0627\x0633\x0645\x062A\x0627\x0631\x064A\x062E",
               1);
}

}  // namespace

bool TakePseudoLanguage(std::u16string_view name) {
  translation = name == u"long"            ? Lengthened
                : name == u"ideographs"    ? InIdeographs
                : name == u"right-to-left" ? RightToLeft
                                           : Translation(nullptr);
  return translation != nullptr;
}

}  // namespace quilmark
