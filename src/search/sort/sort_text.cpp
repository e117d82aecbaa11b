#include <functional>
#include <string>

#include "platform/text.h"
#include "search/sort/sort_rows.h"

namespace quilmark {

namespace {

// By whatever folded text textOf(row, record) gives.
template <typename TextOf>
SortedRows SortedByKey(RowRun rows, const SortJob& job, TextOf textOf) {
  KeyedRows keyed(rows.size());
  const auto add = [&](SortKeys& keys, size_t number, const FileRecord* record) {
    keyed.entries[number] =
        MakeKeyEntry(keys.Add(textOf(rows[number], record)), static_cast<uint32_t>(number));
  };
  if (!AddRowsOnCores(rows, job, keyed, add)) return {};
  const KeyOrder order = {.ascending = job.ascending, .before = IsBeforeInIndex, .context = &rows};
  SortedRows sorted(rows.size());
  SortEntriesOnCores(keyed.entries.All(), order, [&](size_t first, std::span<const KeyEntry> piece) {
    for (const KeyEntry& entry : piece) sorted[first++] = rows[entry.row];
  });
  return sorted;
}

SortedRows SortedByName(RowRun rows, const SortJob& job) {
  return SortedByKey(rows, job, [](const MatchItem&, const FileRecord* record) {
    return record != nullptr ? FoldedNameOf(*record) : std::u16string_view();
  });
}

SortedRows SortedByWholePath(RowRun rows, const SortJob& job) {
  return SortedByKey(rows, job, [](const MatchItem& row, const FileRecord* record) {
    return record != nullptr ? FoldText(BuildPath(*row.volume, row.index)) : std::u16string();
  });
}

}  // namespace

bool IsBeforeInIndex(const void* context, uint32_t a, uint32_t b) {
  const RowRun& rows = *static_cast<const RowRun*>(context);
  if (rows[a].volume != rows[b].volume) return std::less<>()(rows[a].volume, rows[b].volume);
  return rows[a].index < rows[b].index;
}

std::vector<MatchItem> SortedByText(const std::vector<MatchItem>& rows, const SortJob& job) {
  if (job.column != kColumnOfPath) return SortedByName(rows, job);
  if (auto sorted = SortedByPathTree(rows, job)) return std::move(*sorted);
  return SortedByWholePath(rows, job);
}

}  // namespace quilmark
