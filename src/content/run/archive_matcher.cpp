#include "content/run/archive_matcher.h"

#include <memory>
#include <utility>

#include "content/archive/zip_file.h"

namespace quilmark {

ArchiveMatcher MakeZipMatcher(const MatchPlan& plan) {
  struct Parts {
    ArchiveQuery query;
    ZipFileReader reader;
    int contentMaxFileSizeMB = 0;
  };
  auto parts = std::make_shared<Parts>();
  parts->query.terms = MakeArchiveTerms(plan.Groups, plan.WideGroups);
  parts->query.innerPatterns = plan.InnerPatterns;
  parts->reader.content = plan.makeContent();
  parts->contentMaxFileSizeMB = plan.contentMaxFileSizeMB;
  return [parts](std::u16string_view path, const WorkCheck& check) {
    return MatchZipFile(path, parts->query, check, parts->contentMaxFileSizeMB, parts->reader);
  };
}

}  // namespace quilmark
