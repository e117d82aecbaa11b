#include "content/match/group_search.h"

#include <algorithm>

namespace quilmark {

namespace {

size_t LongestFormOf(std::span<const ByteNeedle> needles) {
  size_t longest = 1;
  for (const ByteNeedle& needle : needles) {
    for (size_t i = 0; i < needle.count; ++i) longest = std::max(longest, needle.forms[i].bytes.size());
  }
  return longest;
}

// In steps that reach over their end by what a form needs to stand across it.
bool HoldsAnyNeedle(std::span<const ByteNeedle> needles, std::span<const char> block,
                    const WorkCheck& check) {
  static const ByteKernel holds = BestByteKernel();
  const size_t overlap = LongestFormOf(needles) - 1;
  for (size_t at = 0; at < block.size(); at += kBytesACheck) {
    if (!check.GoesOn()) return false;
    const size_t size = std::min(block.size() - at, kBytesACheck + overlap);
    const char* const step = block.data() + at;
    for (const ByteNeedle& needle : needles) {
      if (holds(needle, step, step + size)) return true;
    }
  }
  return false;
}

bool HoldsTerm(const ContentGroup& group, size_t term, std::span<const char> block,
               const WorkCheck& check) {
  if (term < group.needles.size()) return HoldsAnyNeedle(group.needles[term], block, check);
  return HoldsAnyNeedle(NeedlesOf(group, term), block, check);
}

bool HoldsGroup(const ContentGroup& group, std::span<const char> block, const WorkCheck& check) {
  const size_t width = WidthOf(group);
  for (size_t term = 0; term < width; ++term) {
    if (!HoldsTerm(group, term, block, check)) return false;
  }
  return width != 0;
}

bool IsWhole(const std::vector<bool>& terms) {
  return !terms.empty() && std::find(terms.begin(), terms.end(), false) == terms.end();
}

}  // namespace

bool SearchGroupsInBytes(const char* first, const char* last, const std::vector<ContentGroup>& groups,
                         const WorkCheck& check) {
  const std::span<const char> block(first, last);
  for (const ContentGroup& group : groups) {
    if (!check.GoesOn()) return false;
    if (HoldsGroup(group, block, check)) return true;
  }
  return false;
}

TermFound::TermFound(const std::vector<ContentGroup>& groups) : groups_(groups) {
  for (const ContentGroup& group : groups) found_.emplace_back(WidthOf(group), false);
}

bool TermFound::Search(std::span<const char> piece, const WorkCheck& check) {
  for (size_t i = 0; i < groups_.size(); ++i) {
    std::vector<bool>& terms = found_[i];
    for (size_t term = 0; term < terms.size(); ++term) {
      if (terms[term]) continue;
      if (!check.GoesOn()) return false;
      terms[term] = HoldsTerm(groups_[i], term, piece, check);
    }
    if (IsWhole(terms)) return true;
  }
  return false;
}

bool TermFound::HasWholeGroup() const { return std::any_of(found_.begin(), found_.end(), IsWhole); }

}  // namespace quilmark
