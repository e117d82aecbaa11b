// Lists as disk analysis and the duplicates will show them, over made-up rows: what a ListView and a
// canvas have to be good for. Pixels at 96 dpi.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "shell/list/list_view.h"

namespace quilmark {

// What is using space: a chip of the slice, name over kind and share bar, share, size.
inline constexpr ListStyle kSpaceStyle = {
    .pitch = 40, .notchLines = 3, .bar = 11, .leastThumb = 24, .barTakesRoom = true};
// Duplicate groups by size: a badge with the rank, total over a bar, size and number of files.
inline constexpr ListStyle kGroupStyle = {.pitch = 52,
                                          .notchLines = 2,
                                          .bar = 11,
                                          .leastThumb = 28,
                                          .slack = 2,
                                          .barTakesRoom = true,
                                          .trackDrags = true};
// Files of a group: path and size.
inline constexpr ListStyle kFileStyle = {.pitch = 30,
                                         .notchLines = 3,
                                         .bar = 11,
                                         .leastThumb = 28,
                                         .slack = 2,
                                         .barTakesRoom = true,
                                         .trackDrags = true};

// Rows that are copied by Read, one chosen among them.
template <typename Row>
class MadeUpRows : public ListSource {
 public:
  uint64_t Count() const override { return count; }
  PaintOutcome Read(uint64_t first, uint64_t end) override {
    first_ = first;
    read_.clear();
    for (uint64_t row = first; row < std::min(end, count); ++row) read_.push_back(RowOf(row));
    return {};
  }
  PaintOutcome PaintRow(Canvas& canvas, uint64_t row, const RowPlace& place,
                        const ViewContext& context) const override {
    if (row - first_ < read_.size()) PaintRead(canvas, row, read_[row - first_], place, context);
    return {};
  }

  uint64_t count = 40;
  int64_t chosen = -1;

 protected:
  virtual Row RowOf(uint64_t row) const = 0;
  virtual void PaintRead(Canvas& canvas, uint64_t row, const Row& data, const RowPlace& place,
                         const ViewContext& context) const = 0;
  bool IsChosen(uint64_t row) const { return static_cast<int64_t>(row) == chosen; }

 private:
  uint64_t first_ = 0;
  std::vector<Row> read_;
};

struct SpaceRow {
  std::u16string name, size, share;
  bool isDirectory = false;
  double percent = 0;
  Color slice = 0;
};
class SpaceRows : public MadeUpRows<SpaceRow> {
 protected:
  SpaceRow RowOf(uint64_t row) const override;
  void PaintRead(Canvas& canvas, uint64_t row, const SpaceRow& data, const RowPlace& place,
                 const ViewContext& context) const override;
};

struct GroupRow {
  std::u16string total, each;  // "Total  3.40 GB", "1.70 GB × 2"
  int64_t totalSize = 0;
};
class GroupRows : public MadeUpRows<GroupRow> {
 public:
  int64_t largest = 1'000'000;

 protected:
  GroupRow RowOf(uint64_t row) const override;
  void PaintRead(Canvas& canvas, uint64_t row, const GroupRow& data, const RowPlace& place,
                 const ViewContext& context) const override;
};

struct FileRow {
  std::u16string path, size;
};
class FileRows : public MadeUpRows<FileRow> {
 protected:
  FileRow RowOf(uint64_t row) const override;
  void PaintRead(Canvas& canvas, uint64_t row, const FileRow& data, const RowPlace& place,
                 const ViewContext& context) const override;
};

}  // namespace quilmark
