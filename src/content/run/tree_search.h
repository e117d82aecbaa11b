// A content search of folders that are in no index: folders are listed and files matched by the same
// threads, so that the first hit comes while the tree is still being walked.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "content/run/content_run.h"
#include "content/run/file_matcher.h"
#include "platform/generation.h"

namespace quilmark {

// What is searched, and how.
struct TreeQuery {
  std::vector<std::u16string> roots;  // folders and files, as paths of files.h
  std::vector<std::u16string> exts;   // lower-case, each with its dot; none: every file
  MatchPlan plan;
  size_t threads = 1;  // 1 at least
  Ticket ticket;
  // A hit, on some worker's thread and by several at once. Returns false to end the search. It may be
  // called until WaitForTreeSearch has said that all has ended.
  std::function<bool(std::u16string_view path)> onHit;
};

// What has been done so far. Any thread reads it.
struct TreeFigures {
  std::array<std::atomic<uint64_t>, kMatchKinds> outcomes{};  // files by FileMatch
  std::atomic<uint64_t> files = 0;                            // looked at
  std::atomic<uint64_t> unlistedFolders = 0;                  // that could not be listed to their end
};

// A search under way. Held by its workers too: one whose file hangs may outlive whoever started it.
struct TreeSearch;

// Starts the workers, on jobs of their own, and returns at once.
[[nodiscard]] std::shared_ptr<TreeSearch> StartTreeSearch(TreeQuery query);

// Waits until all workers have ended, at most `timeoutMs`; false at the timeout.
[[nodiscard]] bool WaitForTreeSearch(TreeSearch& search, uint32_t timeoutMs);

// Of that search; good as long as it is held.
const TreeFigures& FiguresOf(const TreeSearch& search);

}  // namespace quilmark
