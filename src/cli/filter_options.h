// What narrows and orders the hits of a search, from the texts of the command line.
//
// Every parser gives a value, or says why there is none. Nothing here reads the disk or the clock; days
// are those of the user's time zone.
#pragma once

#include <limits>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "search/filter/filters.h"

namespace quilmark {

// What a parser made of a text.
template <typename Value>
struct [[nodiscard]] Parsed {
  Value value = {};
  std::string error = {};  // empty if there is a value
};

// Takes "pdf,docx". The extensions come back folded, each with its dot.
Parsed<std::vector<std::u16string>> ParseExtensions(const std::string& text);

// Takes "10M..2G", "10M..", "..2G", and "10M" for "10M..". Both ends belong to the range, which is in
// bytes. The units B, K, M, G, T are powers of 1,024; a number without one means bytes. Up to six
// decimals.
Parsed<SizeRange> ParseSizeRange(const std::string& text);

// A range of moments; both ends belong to it.
struct DateRange {
  FileTime from = 0;
  FileTime to = std::numeric_limits<FileTime>::max();

  bool operator==(const DateRange&) const = default;
};

// Takes "7d", "2w", "1mo", "1y" as the time since that long before `now`; "today", "yesterday" and
// "2025-01-31" as that day; "2025-01-01..2025-02-01" as the time from the first moment of one day to the
// last of the other, either of which may be left out.
Parsed<DateRange> ParseDateRange(const std::string& text, FileTime now);

// By which column hits are sorted, and which way.
struct SortOrder {
  int column = 0;  // of sort.h
  bool ascending = true;

  bool operator==(const SortOrder&) const = default;
};

// Takes "name", "size", "modified", "created" or "path", with ":asc" or ":desc" behind it. Without these
// sizes begin with the largest and all else ascends, as by a click in the window.
Parsed<SortOrder> ParseSortOrder(const std::string& text);

// The index in `table` of the category with that label, whatever its case. The error lists all labels.
Parsed<size_t> FindCategory(const FilterTable& table, const std::string& name);

}  // namespace quilmark
