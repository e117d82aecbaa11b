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

template <typename Value>
struct Parsed {
  Value value = {};
  std::string error = {};  // empty if there is a value
};

// "pdf,docx": folded, each with its dot.
Parsed<std::vector<std::u16string>> ParseExtensions(const std::string& text);

// "10M..2G", "10M..", "..2G", and "10M" for "10M..". Both ends belong to it. Units B, K, M, G, T are
// powers of 1,024; none means bytes. Up to six decimals.
Parsed<SizeRange> ParseSizeRange(const std::string& text);

// Both ends belong to it.
struct DateRange {
  FileTime from = 0;
  FileTime to = std::numeric_limits<FileTime>::max();

  bool operator==(const DateRange&) const = default;
};

// "7d", "2w", "1mo", "1y": from that long before `now` on. "today", "yesterday", "2025-01-31": that day.
// "2025-01-01..2025-02-01": from the first moment of one day to the last of the other; either may be
// left out.
Parsed<DateRange> ParseDateRange(const std::string& text, FileTime now);

struct SortOrder {
  int column = 0;  // of sort.h
  bool ascending = true;

  bool operator==(const SortOrder&) const = default;
};

// "name", "size", "modified", "created", "path", with ":asc" or ":desc" behind it. Without one of these
// sizes begin with the largest and all else ascends, as by a click in the window.
Parsed<SortOrder> ParseSortOrder(const std::string& text);

// The index of the category with that label, whatever its case; the error lists all labels.
Parsed<size_t> FindCategory(const FilterTable& table, const std::string& name);

}  // namespace quilmark
