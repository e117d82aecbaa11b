// Any text of the editor and any name: what is renamed to is a name that every system takes, and asking
// again changes nothing; what is selected at first lies within the name.
#include "shell/actions/rename_text.h"

#include "platform/utf.h"
#include "search/query/query.h"
#include "support/fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace quilmark;
  FuzzInput input = InputOf(data, size);
  const std::u16string oldName = FromUtf8(input.TakeLine()), typed = UnitsOf(input.rest);
  const auto [step, text] = CheckRename(oldName, typed);
  Require(typed.find(text) != typed.npos);
  if (step == RenameStep::kClose) Require(text.empty() || text == oldName);
  if (step == RenameStep::kRename) {
    Require(!text.empty() && text != oldName && text.find_last_not_of(u" .") == text.size() - 1);
    Require(text.find_first_of(u"\\/:*?\"<>|") == text.npos && text.front() != u' ');
    const RenameCheck again = CheckRename(oldName, text);
    Require(again.step == step && again.name == text);
    // A name that is no device's is none with an extension either.
    Require(CheckRename(oldName, text + u".x").step != RenameStep::kInvalid);
  }

  const size_t stem = SelectedStem(typed, false);
  Require(stem == typed.size() || (typed[stem] == u'.' && typed.find(u'.', stem + 1) == typed.npos));
  Require(SelectedStem(typed, true) == typed.size());
  return 0;
}
