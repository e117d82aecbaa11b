// Whether an Office or OpenDocument file holds the terms of a content query.
#pragma once

#include <memory>
#include <string_view>

#include "content/archive/scratch.h"
#include "content/archive/zip_walk.h"
#include "content/match/file_match.h"
#include "content/match/work_check.h"
#include "platform/file_content.h"

namespace quilmark {

// What a worker reads archives with. Made once and used for file after file; one thread.
struct ZipFileReader {
  std::unique_ptr<FileContent> content =
      MakeFileContent();  // never null; asks for the file, reads nothing
  ArchiveScratch scratch;
};

// Whether an entry of the archive that matches a pattern satisfies one of the groups. A file above
// `contentMaxFileSizeMB` MiB is a miss; 0 or less means no limit. A path of two backslashes, a network
// path, is refused untouched. A file that is no archive is not looked at in another way.
[[nodiscard]] FileMatch MatchZipFile(std::u16string_view path, const ArchiveQuery& query,
                                     const WorkCheck& check, int contentMaxFileSizeMB,
                                     ZipFileReader& reader);

}  // namespace quilmark
