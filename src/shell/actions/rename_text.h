// What may become of a name that is being edited.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quilmark {

// What is done with a text that was typed.
enum class RenameStep {
  kClose,    // nothing to do
  kInvalid,  // holds what no name may hold
  kRename,
};

// What follows from a text in the editor, and the name that it would give.
struct [[nodiscard]] RenameCheck {
  RenameStep step = RenameStep::kClose;
  std::u16string name;
};

// `name` is the text without blanks around it, and without dots at its end. A text that is the old name
// is left as it is.
RenameCheck CheckRename(std::u16string_view oldName, std::u16string text);

// What ends the editing of a name.
enum class CommitEnd {
  kByKey,
  kByLeaving,            // the focus went elsewhere in the window, such as to another row
  kByLeavingTheProgram,  // the focus went to another program
};

// What becomes of the editor after a rename that did not come about.
enum class FailedRename {
  kClose,  // it is closed
  kTell,   // the user is told, and then goes on editing
  kKeep,   // it stays, and no message comes up over the window of another program
};

// What becomes of the editor. `isGone`: the file is not there any more under its old name.
FailedRename AfterFailedRename(bool isGone, CommitEnd end);

// How many units of a name an editor selects at first: those of a file before its extension, all of a
// folder.
size_t SelectedStem(std::u16string_view name, bool isDirectory);

}  // namespace quilmark
