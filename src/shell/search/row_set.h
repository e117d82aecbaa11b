// A set of rows that costs by its stretches and not by its rows: a range over millions is one entry.
#pragma once

#include <cstdint>
#include <map>

namespace quilmark {

class RowSet {
 public:
  bool contains(uint64_t row) const;
  uint64_t size() const { return size_; }
  bool empty() const { return size_ == 0; }

  void clear();
  void insert(uint64_t row);
  bool erase(uint64_t row);  // false if it was not in

  // Makes it the rows from `first` to `last`, both included.
  void assign(uint64_t first, uint64_t last);

  // Stretches in ascending order: first row, and the row behind the last.
  const std::map<uint64_t, uint64_t>& Stretches() const { return stretches_; }

 private:
  using Stretch = std::map<uint64_t, uint64_t>::iterator;
  Stretch StretchOf(uint64_t row);  // end() for a row that is out

  std::map<uint64_t, uint64_t> stretches_;  // never touching each other
  uint64_t size_ = 0;
};

}  // namespace quilmark
