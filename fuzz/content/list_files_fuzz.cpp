// Any bytes as a list file of content search: items are what they must be, and a list that is written is
// read as it was.
#include "content/settings/list_files.h"

#include "platform/text.h"
#include "platform/text_file.h"
#include "platform/utf.h"
#include "support/fuzz_input.h"

using namespace quilmark;

namespace {

void CheckExtensions(std::u16string_view text, const ListFile& file) {
  const auto exts = ExtensionItems(text, file);
  for (const std::u16string& ext : exts) {
    Require(ext.size() > 1 && ext[0] == u'.' && FoldText(ext) == ext);
    Require(ext.find_first_of(u",\n") == ext.npos);
  }
  const auto once = WithoutRepeats(exts);
  Require(once.size() <= exts.size() && WithoutRepeats(once) == once);
  const std::u16string written = DecodeText(TextFileBytes(ListText(file, once)));
  // What is longer than a line comes back in pieces, and so may what ends in a part of a line end.
  if (written.size() < 2000) Require(ExtensionItems(written, file) == once);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  // Half a pair of units has no form in a file.
  const std::u16string text = FromUtf8(ToUtf8(DecodeText(InputOf(data, size).RestAsText())));
  CheckExtensions(text, ZipExtsFile());
  CheckExtensions(text, PickerExtsFile());
  for (const std::string& pattern : PatternItems(text)) {
    Require(!pattern.empty() && pattern.find_first_of(",\n") == pattern.npos);
    for (const char byte : pattern) Require(byte < 'A' || byte > 'Z');
  }
  return 0;
}
