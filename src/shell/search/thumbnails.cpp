#include "shell/search/thumbnails.h"

#include <algorithm>
#include <shared_mutex>
#include <string>
#include <utility>

#include "search/results/glance.h"
#include "shell/search/row_icons.h"

namespace quilmark {

namespace {

struct ThumbnailJob {
  IconCache* icons = nullptr;
  std::shared_ptr<const ResultSet> rows;
  RowRange range;
  int size = 0;
  Ticket search;  // the rows are those of a search that is still current
  Ticket ticket;

  bool IsCurrent() const { return ticket.IsCurrent() && search.IsCurrent(); }
};

// The path of a picture; empty for anything else, and for a record that is gone.
std::u16string PicturePathOf(const MatchItem& hit) {
  // A build holds the lock for as long as it takes.
  if (hit.volume == nullptr || !IsSearchable(*hit.volume)) return {};
  const std::shared_lock lock(hit.volume->indexLock);
  const auto kind = KindOf(*hit.volume, hit.index);
  if (!kind || kind->isDeleted || kind->isDirectory) return {};
  std::u16string path = BuildPath(*hit.volume, hit.index);
  return HasImageExtension(path) ? path : std::u16string();
}

// True if the row has a thumbnail that it had not.
bool LoadThumbnail(const ThumbnailJob& job, const MatchItem& hit) {
  const std::u16string path = PicturePathOf(hit);
  if (path.empty()) return false;
  const IconRequest request = {.path = path, .size = job.size, .thumbnail = true};
  if (job.icons->HasCachedIcon(request)) return false;
  return job.icons->GetIcon(request) != nullptr && job.icons->HasCachedIcon(request);
}

void LoadThumbnails(const ThumbnailJob& job) {
  bool hasCome = false;
  for (uint64_t row = job.range.first; row < job.range.end; ++row) {
    if (!job.IsCurrent()) return;
    hasCome = LoadThumbnail(job, (*job.rows)[row]) || hasCome;
  }
  if (hasCome && job.IsCurrent()) TellAttributesChanged();
}

}  // namespace

void LoadThumbnailsAsync(IconCache& icons, std::shared_ptr<const ResultSet> rows, RowRange range,
                         int size) {
  range.end = std::min<uint64_t>(range.end, rows->size());
  if (range.first >= range.end || ShutdownRequested) return;
  const auto prepare = [&] {
    SearchSession& session = TheSearch();
    const ThumbnailJob job{.icons = &icons,
                           .rows = std::move(rows),
                           .range = range,
                           .size = size,
                           .search = session.CurrentResults.Latest(),
                           .ticket = session.thumbGeneration.Supersede()};
    return [job] { LoadThumbnails(job); };
  };
  // Whoever is refused meanwhile asks anew when the list is painted.
  TheSearch().thumbHydration.StartWith("thumb_hydration", prepare, TellAttributesChanged);
}

}  // namespace quilmark
