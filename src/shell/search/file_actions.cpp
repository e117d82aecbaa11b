#include "shell/search/file_actions.h"

namespace quilmark {

Effects RunFileAction(SearchView&, const ViewContext&, FileAction) { return {}; }

Effects BeginFileDrag(SearchView&, const ViewContext&) { return {}; }

Effects ShowSystemContextMenu(SearchView&, const ViewContext&) { return {}; }

}  // namespace quilmark
