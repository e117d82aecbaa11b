#include <numeric>
#include <shared_mutex>

#include "search/sort/path_tree.h"
#include "search/sort/sort_rows.h"

namespace quilmark {

namespace {

constexpr uint32_t kNotLookedUp = UINT32_MAX;

// Rows below their folders, and folders below theirs. Entries are numbered from 0: first the rows, then
// the nodes of the tree.
struct PathSort {
  explicit PathSort(RowRun all)
      : rows(all), keyed(all.size()), nodeOf(all.size()), parentFrns(all.size()) {}

  RowRun rows;
  KeyedRows keyed;
  std::vector<uint32_t> nodeOf;  // the folder of each row
  std::vector<uint64_t> parentFrns;
  PathTree tree;
  std::optional<KeyEntries> grouped;  // entries by folder
  std::vector<size_t> starts;         // in `grouped`, by node; and the last end
};

// Keys of the names. A row that is gone lies beside the drives, under an empty name. False if
// the ticket went stale.
bool TakeNames(PathSort& sort, const Ticket& ticket, std::atomic<bool>& hasBackslash) {
  return AddRowsOnCores(
      sort.rows, ticket, sort.keyed, [&](SortKeys& keys, size_t number, const FileRecord* record) {
        const auto name = record != nullptr ? FoldedNameOf(*record) : std::u16string_view();
        if (HasBackslash(name)) hasBackslash = true;
        sort.nodeOf[number] = record != nullptr ? kNotLookedUp : 0;
        sort.parentFrns[number] = record != nullptr ? record->parentFrn : 0;
        sort.keyed.entries[number] = MakeKeyEntry(keys.Add(name), static_cast<uint32_t>(number));
      });
}

// False where the folders are no tree.
bool FindFolders(PathSort& sort) {
  size_t number = 0;
  return ForEachRun(sort.rows, [&](RowRun run) {
    const VolumeIndex& volume = *run[0].volume;
    const std::shared_lock lock(volume.indexLock);
    for (size_t i = 0; i < run.size(); ++i, ++number) {
      if (sort.nodeOf[number] != kNotLookedUp) continue;
      const bool isOfLast = i != 0 && sort.parentFrns[number] == sort.parentFrns[number - 1] &&
                            sort.nodeOf[number - 1] != 0;
      const auto node =
          isOfLast ? sort.nodeOf[number - 1] : FindPathNode(sort.tree, volume, sort.parentFrns[number]);
      if (!node) return false;
      sort.nodeOf[number] = *node;
    }
    return true;
  });
}

void GroupByFolder(PathSort& sort) {
  const std::vector<PathNode>& nodes = sort.tree.nodes;
  sort.starts.assign(nodes.size() + 1, 0);
  for (const uint32_t node : sort.nodeOf) ++sort.starts[node];
  for (size_t node = 1; node < nodes.size(); ++node) ++sort.starts[nodes[node].parent];
  std::exclusive_scan(sort.starts.begin(), sort.starts.end(), sort.starts.begin(), size_t{0});

  std::vector<size_t> places(sort.starts.begin(), sort.starts.end() - 1);
  KeyEntries& grouped = sort.grouped.emplace(sort.starts.back());
  for (size_t row = 0; row < sort.rows.size(); ++row) {
    grouped[places[sort.nodeOf[row]]++] = sort.keyed.entries[row];
  }
  for (size_t node = 1; node < nodes.size(); ++node) {
    KeyEntry& entry = grouped[places[nodes[node].parent]++];
    entry = nodes[node].entry;
    entry.row = static_cast<uint32_t>(sort.rows.size() + node);
  }
}

// Equal keys are those of rows: the key of a folder ends with a backslash.
bool IsRowBefore(const void* context, uint32_t a, uint32_t b) {
  const RowRun& rows = *static_cast<const RowRun*>(context);
  if (a >= rows.size() || b >= rows.size()) return a < b;
  return IsBeforeInIndex(context, a, b);
}

void SortGroups(PathSort& sort, bool ascending) {
  constexpr size_t kLarge = 50'000, kFoldersAPiece = 256;
  const KeyOrder order = {.ascending = ascending, .before = IsRowBefore, .context = &sort.rows};
  const size_t count = sort.tree.nodes.size();
  const auto groupOf = [&sort](size_t node) {
    return sort.grouped->All().subspan(sort.starts[node], sort.starts[node + 1] - sort.starts[node]);
  };
  for (size_t node = 0; node < count; ++node) {
    if (groupOf(node).size() >= kLarge) SortEntriesOnCores(groupOf(node), order);
  }
  OnCores(count, kFoldersAPiece, [&](size_t, size_t first, size_t end) {
    for (size_t node = first; node < end; ++node) {
      if (groupOf(node).size() < kLarge) SortEntries(groupOf(node), order);
    }
  });
}

// What lies in a folder and below. As deep as a path is at most.
void Emit(const PathSort& sort, size_t node, ResultSet& sorted) {
  for (size_t i = sort.starts[node]; i < sort.starts[node + 1]; ++i) {
    const uint32_t number = (*sort.grouped)[i].row;
    if (number < sort.rows.size()) {
      sorted.push_back(sort.rows[number]);
    } else {
      Emit(sort, number - sort.rows.size(), sorted);
    }
  }
}

}  // namespace

std::optional<ResultSet> SortedByPathTree(RowRun rows, bool ascending, const Ticket& ticket) {
  PathSort sort(rows);
  std::atomic<bool> hasBackslash = false;
  const bool isTree = TakeNames(sort, ticket, hasBackslash) && !hasBackslash && FindFolders(sort);
  if (!isTree) return std::nullopt;
  GroupByFolder(sort);
  SortGroups(sort, ascending);
  ResultSet sorted;
  sorted.reserve(rows.size());
  Emit(sort, 0, sorted);
  return sorted;
}

}  // namespace quilmark
