#include <functional>
#include <string>

#include "platform/text.h"
#include "search/sort/sort_rows.h"

namespace quilmark {

namespace {

// By whatever folded text textOf(row, record) gives.
template <typename TextOf>
std::optional<ResultSet> SortedByKey(RowRun rows, bool ascending, const Ticket& ticket, TextOf textOf) {
  KeyedRows keyed(rows.size());
  const auto add = [&](SortKeys& keys, size_t number, const FileRecord* record) {
    keyed.entries[number] =
        MakeKeyEntry(keys.Add(textOf(rows[number], record)), static_cast<uint32_t>(number));
  };
  if (!AddRowsOnCores(rows, ticket, keyed, add)) return std::nullopt;
  const KeyOrder order = {.ascending = ascending, .before = IsBeforeInIndex, .context = &rows};
  ResultSet sorted(rows.size());
  SortEntriesOnCores(keyed.entries.All(), order, [&](size_t first, std::span<const KeyEntry> piece) {
    for (const KeyEntry& entry : piece) sorted[first++] = rows[entry.row];
  });
  return sorted;
}

std::optional<ResultSet> SortedByName(RowRun rows, bool ascending, const Ticket& ticket) {
  return SortedByKey(rows, ascending, ticket, [](const MatchItem&, const FileRecord* record) {
    return record != nullptr ? FoldedNameOf(*record) : std::u16string_view();
  });
}

}  // namespace

bool IsBeforeInIndex(const void* context, uint32_t a, uint32_t b) {
  const RowRun& rows = *static_cast<const RowRun*>(context);
  if (rows[a].volume != rows[b].volume) return std::less<>()(rows[a].volume, rows[b].volume);
  return rows[a].index < rows[b].index;
}

std::optional<ResultSet> SortedByWholePath(RowRun rows, bool ascending, const Ticket& ticket) {
  return SortedByKey(rows, ascending, ticket, [](const MatchItem& row, const FileRecord* record) {
    return record != nullptr ? FoldText(BuildPath(*row.volume, row.index)) : std::u16string();
  });
}

std::optional<ResultSet> SortedByText(RowRun rows, SetOrder order, const Ticket& ticket) {
  if (order.column != kColumnOfPath) return SortedByName(rows, order.ascending, ticket);
  if (auto sorted = SortedByPathTree(rows, order.ascending, ticket)) return sorted;
  if (!ticket.IsCurrent()) return std::nullopt;
  return SortedByWholePath(rows, order.ascending, ticket);
}

}  // namespace quilmark
