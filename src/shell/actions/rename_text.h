// What may become of a name that is being edited.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quilmark {

enum class RenameStep {
  kClose,    // nothing to do
  kInvalid,  // holds what no name may hold
  kRename,
};

// For the text of the editor; `text` is trimmed, of dots at its end too.
RenameStep CheckRename(std::u16string_view oldName, std::u16string& text);

// What ends the editing of a name.
enum class CommitEnd {
  kByKey,
  kByLeaving,            // for another row, which the user has chosen by that
  kByLeavingTheProgram,  // who comes back finds the editor
};

enum class FailedRename {
  kClose,
  kTell,  // then back into the editor
  kKeep,  // with nothing said: no message over another program's window
};

// After a rename that did not come about. `isGone`: the file is not there any more under its old name.
FailedRename AfterFailedRename(bool isGone, CommitEnd end);

// Units of a name that an editor selects at first: a file's without its extension.
size_t SelectedStem(std::u16string_view name, bool isDirectory);

}  // namespace quilmark
