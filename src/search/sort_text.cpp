#include <algorithm>
#include <bit>
#include <cstring>
#include <memory>
#include <shared_mutex>
#include <string>
#include <thread>

#include "platform/text.h"
#include "search/sort.h"

namespace quilmark {

namespace {

// A row with its folded key. The first four units stand in one number, most significant first, so that
// most comparisons touch nothing else.
struct NameSortRow {
  uint64_t prefix = 0;
  const char16_t* key = nullptr;
  uint32_t length = 0;  // units
  uint32_t index = 0;
  VolumeIndex* volume = nullptr;
};

// Keys, one behind the other, in blocks that never move.
class KeyArena {
 public:
  const char16_t* Add(std::u16string_view text) {
    if (left_ < text.size()) {
      const size_t units = std::max(kBlock, text.size());
      blocks_.push_back(std::make_unique_for_overwrite<char16_t[]>(units));
      next_ = blocks_.back().get();
      left_ = units;
    }
    char16_t* const place = next_;
    FoldUnits(text.data(), place, text.size());
    next_ += text.size();
    left_ -= text.size();
    return place;
  }

 private:
  static constexpr size_t kBlock = 1 << 20;
  std::vector<std::unique_ptr<char16_t[]>> blocks_;
  char16_t* next_ = nullptr;
  size_t left_ = 0;
};

uint64_t PrefixOf(const char16_t* key, size_t length) {
  uint64_t prefix = 0;
  for (size_t i = 0; i < 4; ++i) prefix = prefix << 16 | (i < length ? key[i] : 0);
  return prefix;
}

int Compare(const NameSortRow& a, const NameSortRow& b) {
  if (a.prefix != b.prefix) return a.prefix < b.prefix ? -1 : 1;
  const uint32_t common = std::min(a.length, b.length);
  for (uint32_t i = std::min(common, 4u); i < common; ++i) {
    if (a.key[i] != b.key[i]) return a.key[i] < b.key[i] ? -1 : 1;
  }
  if (a.length == b.length) return 0;
  return a.length < b.length ? -1 : 1;
}

struct Before {
  bool ascending;
  bool operator()(const NameSortRow& a, const NameSortRow& b) const {
    const int order = Compare(a, b);
    if (order != 0) return (order < 0) == ascending;
    if (a.volume != b.volume) return std::less<>()(a.volume, b.volume);
    return a.index < b.index;
  }
};

// Both halves at once, then merged: the machine has at least two cores, and this is all processor.
void SortOnTwoCores(std::vector<NameSortRow>& rows, Before before) {
  constexpr size_t kWorthAThread = 20'000;
  const auto middle = rows.begin() + static_cast<std::ptrdiff_t>(rows.size() / 2);
  if (rows.size() < kWorthAThread) return std::sort(rows.begin(), rows.end(), before);
  std::thread other([&] { std::sort(middle, rows.end(), before); });
  std::sort(rows.begin(), middle, before);
  other.join();
  std::inplace_merge(rows.begin(), middle, rows.end(), before);
}

// The text of a row, in a string that the loop reuses. Empty for a record that is gone.
void TextOf(const MatchItem& item, int column, std::u16string& text) {
  const std::shared_lock lock(item.volume->indexLock);
  text.clear();
  if (item.index >= item.volume->records.size()) return;
  if (column == kColumnOfPath) return BuildPathInto(*item.volume, item.index, text);
  text = NameOf(item.volume->records[item.index]);
}

}  // namespace

std::vector<MatchItem> SortedByText(const std::vector<MatchItem>& items, const SortJob& job) {
  KeyArena arena;
  std::vector<NameSortRow> rows;
  rows.reserve(items.size());
  std::u16string text;
  for (const MatchItem& item : items) {
    if (!IsCurrent(job.generation)) return {};
    TextOf(item, job.column, text);
    const char16_t* const key = arena.Add(text);
    rows.push_back(
        {PrefixOf(key, text.size()), key, static_cast<uint32_t>(text.size()), item.index, item.volume});
  }
  SortOnTwoCores(rows, Before{job.ascending});
  std::vector<MatchItem> sorted;
  sorted.reserve(rows.size());
  for (const NameSortRow& row : rows) sorted.push_back({row.volume, row.index});
  return sorted;
}

}  // namespace quilmark
