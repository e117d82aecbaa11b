// Whether an ordinary file holds the terms of a content query: its bytes as they are, undecoded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "content/match/content_group.h"
#include "content/match/file_match.h"
#include "content/match/work_check.h"
#include "platform/file_content.h"

namespace quilmark {

// Larger files are read in blocks, the others are looked at as a whole where the system has views.
inline constexpr uint64_t kStreamingThreshold = 52'428'800;
inline constexpr size_t kStreamingRead = 4'194'304;
inline constexpr size_t kMostCarried = 1'048'576;
// Without views: what is read at once of files up to the threshold. It stays in the processor's caches.
inline constexpr size_t kCachedRead = 256 * 1'024;

// What a worker reads files with. Made once and used for file after file; one thread.
struct PlainFileReader {
  std::unique_ptr<FileContent> content = MakeFileContent();  // never null
  std::vector<char> buffer;  // grows to kStreamingRead and the carry-over at most
  uint64_t bytes = 0;        // of the last file that were looked at
};

// Whether the file satisfies one of the groups. A file above `contentMaxFileSizeMB` MiB is a miss; 0 or
// less means no limit. A path of two backslashes, a network path, is refused untouched. The file is
// closed in any case.
[[nodiscard]] FileMatch MatchPlainFile(std::u16string_view path, const std::vector<ContentGroup>& groups,
                                       const WorkCheck& check, int contentMaxFileSizeMB,
                                       PlainFileReader& reader);

}  // namespace quilmark
