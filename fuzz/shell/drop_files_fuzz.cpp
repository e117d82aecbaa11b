// Any paths: the block of files is read back as the same list, and ends with its last NUL.
#include "shell/actions/drop_files.h"

#include "platform/bytes.h"
#include "platform/utf.h"
#include "support/fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quilmark;
  FuzzInput input = InputOf(data, size);
  std::vector<std::u16string> paths, wanted;
  while (!input.rest.empty()) {
    paths.push_back(FromUtf8(input.TakeLine()));
    const bool isListed = !paths.back().empty() && paths.back().find(u'\0') == std::u16string::npos;
    if (isListed) wanted.push_back(paths.back());
  }
  const auto block = DropFilesBlock(paths);
  Require(block.empty() == wanted.empty());
  if (block.empty()) return 0;

  const std::span<const std::byte> bytes(block);
  Require(LoadLe<uint32_t>(bytes, 0) == 20 && LoadLe<uint32_t>(bytes, 16) == 1);
  const std::u16string list = UnitsOf(bytes.subspan(20));
  size_t at = 0;
  for (const std::u16string& path : wanted) {
    Require(std::u16string_view(list.c_str() + at) == path);
    at += path.size() + 1;
  }
  Require(at + 1 == list.size() && list.back() == 0 && bytes.size() == 20 + 2 * list.size());
  return 0;
}
