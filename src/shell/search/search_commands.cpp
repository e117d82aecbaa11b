#include "shell/search/search_commands.h"

namespace quilmark {

Effects RunSearchCommand(SearchView&, const ViewContext&, uint16_t) { return {.isTaken = false}; }

}  // namespace quilmark
