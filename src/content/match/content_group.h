// The terms of a content query in the byte forms that they can have on disk.
#pragma once

#include <string>
#include <vector>

#include "search/query/query.h"

namespace quilmark {

// One AND-group of terms. The lists are parallel: one entry a term in each.
struct ContentGroup {
  std::vector<std::string> Utf8Terms;
  std::vector<std::string> AnsiTerms;  // lossy where the system's ANSI code page lacks a character
  std::vector<std::u16string> WideTerms;
};

// The groups of a query, in its order. Made once a search, and never changed afterwards.
std::vector<ContentGroup> MakeContentGroups(const QueryGroups& groups);

}  // namespace quilmark
