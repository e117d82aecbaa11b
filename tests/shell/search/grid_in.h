// Where a list places its rows beside the columns.
#pragma once

#include "shell/list/list_stage.h"
#include "shell/search/search_places.h"

namespace quilmark {

inline RowGrid GridIn(const ColumnsLayout& layout) {
  const ListStage stage{.dpi = layout.dpi};
  NumberedRows rows;
  ListView list(rows, ListStyleOf(layout.view));
  list.Place(layout.rows, layout.columnsWidth, stage.Context());
  return list.Grid();
}

}  // namespace quilmark
