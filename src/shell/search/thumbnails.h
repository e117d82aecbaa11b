// Thumbnails of the rows in view, on a job.
#pragma once

#include <memory>

#include "search/attributes/attr_jobs.h"
#include "shell/list/icon_cache.h"

namespace quilmark {

// Job "thumb_hydration": has `icons` load the thumbnails, of `size` pixels, of the pictures among the
// rows that have none yet. Posts WM_ATTRS_UPDATED if one came, unless another search has begun. Nothing
// for an empty range. While one runs, no other begins: the message comes when it has ended. `icons`
// outlives the job. Any thread.
void LoadThumbnailsAsync(IconCache& icons, std::shared_ptr<const ResultSet> rows, RowRange range,
                         int size);

}  // namespace quilmark
