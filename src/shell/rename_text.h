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

// Units of a name that an editor selects at first: a file's without its extension.
size_t SelectedStem(std::u16string_view name, bool isDirectory);

}  // namespace quilmark
