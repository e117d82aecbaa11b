// A set of rows that costs by its stretches and not by its rows: a range over millions is one entry.
#pragma once

#include <cstdint>
#include <map>

namespace quilmark {

// A set of rows, kept as stretches. The names of its functions are those of the containers of the
// standard library.
class RowSet {
 public:
  // True if the row is in.
  bool contains(uint64_t row) const;

  // Number of rows that are in.
  uint64_t size() const { return size_; }

  // True if no row is in.
  bool empty() const { return size_ == 0; }

  // Takes all rows out.
  void clear();

  // Puts a row in; one that is in stays in.
  void insert(uint64_t row);

  // Takes a row out. False if it was not in.
  bool erase(uint64_t row);

  // Makes it the set of the rows from `first` to `last`, both included.
  void assign(uint64_t first, uint64_t last);

  // The stretches in ascending order, none touching another: the first row of each, and the row behind
  // its last.
  const std::map<uint64_t, uint64_t>& Stretches() const { return stretches_; }

 private:
  using Stretch = std::map<uint64_t, uint64_t>::iterator;
  Stretch StretchOf(uint64_t row);  // end() for a row that is out

  std::map<uint64_t, uint64_t> stretches_;  // never touching each other
  uint64_t size_ = 0;
};

}  // namespace quilmark
