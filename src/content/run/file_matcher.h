// One file of a content search: as bytes, or as an archive, by its extension.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "content/match/content_group.h"
#include "content/match/file_match.h"
#include "content/match/plain_file.h"
#include "content/match/work_check.h"

namespace quilmark {

// Extensions that are always read as archives, whatever the user's list says.
inline constexpr std::array<std::u16string_view, 9> kOfficeExts = {
    u".docx", u".pptx", u".xlsx", u".xlsm", u".docm", u".pptm", u".odt", u".ods", u".odp"};

// Matches archives for one thread, with whatever it reads them with.
using ArchiveMatcher = std::function<FileMatch(std::u16string_view path, const WorkCheck& check)>;

// What files are matched with. Not changed while a search runs; lives as long as its last worker.
struct MatchPlan {
  std::vector<ContentGroup> Groups;
  QueryGroups WideGroups;                  // as the query has them
  std::vector<std::u16string> ZipExts;     // lower-case, each with its dot
  std::vector<std::string> InnerPatterns;  // lower-case UTF-8
  int contentMaxFileSizeMB = 100;          // 0 or less: no limit
  // One for each worker, on its thread. Empty: every archive is a miss.
  std::function<ArchiveMatcher(const MatchPlan&)> makeArchiveMatcher;
  std::function<std::unique_ptr<FileContent>()> makeContent = [] { return MakeFileContent(); };
};

// Whether the file is to be read as an archive: by what follows the last dot of the whole path.
[[nodiscard]] bool IsArchivePath(std::u16string_view path, const std::vector<std::u16string>& zipExts);

// What one worker matches files with: one thread.
class FileMatcher {
 public:
  // `plan` must outlive this.
  explicit FileMatcher(const MatchPlan& plan);

  // The file of that path. Asks the check between its small steps.
  [[nodiscard]] FileMatch Match(std::u16string_view path, const WorkCheck& check);

  // Of the last file: how many of its bytes were looked at. 0 for an archive.
  uint64_t BytesOfLast() const { return plain_.bytes; }

 private:
  const MatchPlan& plan_;
  PlainFileReader plain_;
  ArchiveMatcher archive_;
};

}  // namespace quilmark
