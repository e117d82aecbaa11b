#include "content/match/content_group.h"

namespace quilmark {

std::vector<ContentGroup> MakeContentGroups(const QueryGroups& groups) {
  std::vector<ContentGroup> made(groups.size());
  for (size_t i = 0; i < groups.size(); ++i) made[i].WideTerms = groups[i];
  return made;
}

}  // namespace quilmark
