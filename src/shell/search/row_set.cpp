#include "shell/search/row_set.h"

#include <iterator>

namespace quilmark {

RowSet::Stretch RowSet::StretchOf(uint64_t row) {
  const auto behind = stretches_.upper_bound(row);
  if (behind == stretches_.begin()) return stretches_.end();
  const auto stretch = std::prev(behind);
  return row < stretch->second ? stretch : stretches_.end();
}

bool RowSet::contains(uint64_t row) const {
  const auto behind = stretches_.upper_bound(row);
  return behind != stretches_.begin() && row < std::prev(behind)->second;
}

void RowSet::clear() {
  stretches_.clear();
  size_ = 0;
}

void RowSet::insert(uint64_t row) {
  if (contains(row)) return;
  ++size_;
  uint64_t end = row + 1;
  if (const auto next = stretches_.find(end); next != stretches_.end()) {
    end = next->second;
    stretches_.erase(next);
  }
  const auto behind = stretches_.upper_bound(row);
  if (behind != stretches_.begin() && std::prev(behind)->second == row) {
    std::prev(behind)->second = end;
  } else {
    stretches_.emplace(row, end);
  }
}

bool RowSet::erase(uint64_t row) {
  const auto stretch = StretchOf(row);
  if (stretch == stretches_.end()) return false;
  --size_;
  const uint64_t end = stretch->second;
  if (stretch->first == row) {
    stretches_.erase(stretch);
  } else {
    stretch->second = row;
  }
  if (row + 1 < end) stretches_.emplace(row + 1, end);
  return true;
}

void RowSet::assign(uint64_t first, uint64_t last) {
  stretches_ = {{first, last + 1}};
  size_ = last - first + 1;
}

}  // namespace quilmark
