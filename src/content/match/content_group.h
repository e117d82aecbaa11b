// The terms of a content query in the byte forms that they can have on disk.
#pragma once

#include <string>
#include <vector>

#include "content/match/byte_search.h"
#include "search/query/query.h"

namespace quilmark {

// One AND-group of terms. The lists are parallel: one entry a term in each.
struct ContentGroup {
  std::vector<std::string> Utf8Terms;
  std::vector<std::string> AnsiTerms;  // lossy where the system's ANSI code page lacks a character
  std::vector<std::u16string> WideTerms;
  // What finds any form of a term, prepared by PrepareNeedles. The other lists say what is looked for:
  // a group without this is searched too, and slower.
  std::vector<std::vector<ByteNeedle>> needles;
};

// The groups of a query, in its order, prepared. Made once a search, and never changed afterwards.
std::vector<ContentGroup> MakeContentGroups(const QueryGroups& groups);

// How many terms the group has: the length of the longest of its three lists.
size_t WidthOf(const ContentGroup& group);

// The bytes of UTF-16 little-endian.
std::string WideBytesOf(std::u16string_view text);

// Fills `needles` from the three lists.
void PrepareNeedles(ContentGroup& group);

// The needles of term `term`, made from the lists. None for a term whose forms are all empty or missing:
// it is never found. REQUIRES term < WidthOf(group).
std::vector<ByteNeedle> NeedlesOf(const ContentGroup& group, size_t term);

// Bytes of the longest form of any term; 0 without one.
size_t LongestForm(const std::vector<ContentGroup>& groups);

}  // namespace quilmark
