// Any arguments, a line each: the two words for a hidden start count behind the program's name, in any
// case, and a line that cannot be split is searched as a whole.
#include "shell/app/command_line.h"

#include "platform/text.h"
#include "platform/utf.h"
#include "support/fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quilmark;
  FuzzInput input = InputOf(data, size);
  std::vector<std::u16string> arguments;
  std::u16string line;
  size_t wanted = 0;
  while (!input.rest.empty()) {
    arguments.push_back(FromUtf8(input.TakeLine()));
    const std::u16string folded = FoldText(arguments.back());
    if (arguments.size() > 1 && (folded == u"-hidden" || folded == u"/hidden")) ++wanted;
    line += arguments.back() + u' ';
  }
  Require(WantsHiddenStart(arguments) == (wanted != 0));
  Require(wanted == 0 || WantsHiddenStart(line));
  if (FoldText(line).find(u"hidden") == line.npos) Require(!WantsHiddenStart(line));
  return 0;
}
