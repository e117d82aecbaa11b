// Which groups of a content query a block of memory, or a file in pieces, satisfies.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "content/match/content_group.h"
#include "content/match/work_check.h"

namespace quilmark {

// Between two checks no more than this many bytes are searched for one term.
inline constexpr size_t kBytesACheck = 256 * 1'024;

// Whether for one group at least every term occurs in [first, last) in any of its forms: the bytes as
// they are, at any offset. False too once the check says that the work does not go on. Allocates nothing
// for groups that are prepared.
[[nodiscard]] bool SearchGroupsInBytes(const char* first, const char* last,
                                       const std::vector<ContentGroup>& groups, const WorkCheck& check);

// Which terms have been found so far in a file that comes in pieces.
class TermFound {
 public:
  // None. The groups must outlive this.
  explicit TermFound(const std::vector<ContentGroup>& groups);

  // Looks in a piece for the terms that were not found yet. True at once where that makes a group whole.
  [[nodiscard]] bool Search(std::span<const char> piece, const WorkCheck& check);

  // Whether a group of one term at least has all of them.
  [[nodiscard]] bool HasWholeGroup() const;

 private:
  const std::vector<ContentGroup>& groups_;
  std::vector<std::vector<bool>> found_;  // by group and term
};

}  // namespace quilmark
