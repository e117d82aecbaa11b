#include "content/run/file_matcher.h"

#include <algorithm>

#include "platform/text.h"

namespace quilmark {

bool IsArchivePath(std::u16string_view path, const std::vector<std::u16string>& zipExts) {
  const size_t dot = path.rfind(u'.');
  if (dot == path.npos) return false;
  // A dot in the name of a folder gives what no list holds.
  const std::u16string extension = FoldText(path.substr(dot));
  return std::find(kOfficeExts.begin(), kOfficeExts.end(), extension) != kOfficeExts.end() ||
         std::find(zipExts.begin(), zipExts.end(), extension) != zipExts.end();
}

FileMatcher::FileMatcher(const MatchPlan& plan) : plan_(plan), plain_{.content = plan.makeContent()} {
  if (plan.makeArchiveMatcher) archive_ = plan.makeArchiveMatcher(plan);
}

FileMatch FileMatcher::Match(std::u16string_view path, const WorkCheck& check) {
  if (!IsArchivePath(path, plan_.ZipExts)) {
    return MatchPlainFile(path, plan_.Groups, check, plan_.contentMaxFileSizeMB, plain_);
  }
  plain_.bytes = 0;
  return archive_ ? archive_(path, check) : FileMatch::kNoArchive;
}

}  // namespace quilmark
