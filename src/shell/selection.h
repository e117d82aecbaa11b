// Which rows of the list are chosen. Interface thread.
#pragma once

#include <cstdint>
#include <vector>

#include <boost/unordered/unordered_flat_set.hpp>

namespace quilmark {

// FNV-1a over the eight bytes of a row's index.
struct RowHash {
  size_t operator()(uint64_t row) const {
    uint64_t hash = 0xCBF2'9CE4'8422'2325;
    for (int byte = 0; byte < 8; ++byte, row >>= 8) hash = (hash ^ (row & 0xFF)) * 0x100'0000'01B3;
    return static_cast<size_t>(hash);
  }
};

struct Selection {
  boost::unordered_flat_set<uint64_t, RowHash> rows;
  int64_t focusRow = -1;   // -1: none
  int64_t anchorRow = -1;  // where a range begins; -1: none
};

void ClearSelection(Selection& selection);
void SelectOnly(Selection& selection, int64_t row);

// In if it was out, and out if it was in.
void SelectToggle(Selection& selection, int64_t row);

// From the anchor to the row.
void SelectRange(Selection& selection, int64_t row);

// Ascending, within a list of `rowCount`; the row that has the focus where none is chosen.
std::vector<uint64_t> SelectedRows(const Selection& selection, uint64_t rowCount);

}  // namespace quilmark
