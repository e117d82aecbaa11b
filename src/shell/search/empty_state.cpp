#include "shell/search/empty_state.h"

#include "config/translate.h"
#include "platform/format.h"
#include "search/results/glance.h"
#include "search/results/search_session.h"

namespace quilmark {

namespace {

std::u16string TitleOf(Emptiness why) {
  switch (why) {
    case Emptiness::kNotFound:
      return TranslateOr(u"Empty_NoResults", u"Nothing found");
    case Emptiness::kFiltered:
      return TranslateOr(u"Empty_Filtered", u"No hit passes the filters");
    default:
      return TranslateOr(u"Empty_TypeToSearch", u"Type a part of a name; Enter lists everything");
  }
}

}  // namespace

EmptyText EmptyListText(Emptiness why, uint64_t indexed) {
  return {TitleOf(why),
          FormatText(TranslateOr(u"Empty_IndexedFmt", u"%llu files and folders indexed"), indexed)};
}

uint64_t CountIndexed(const SearchEngine& engine) {
  uint64_t count = 0;
  for (VolumeIndex* const volume : CopyVolumes(engine)) {
    if (!IsSearchable(*volume)) continue;
    const auto lock = LockForGlance(*volume);
    if (lock) count += volume->records.size() - volume->deletedCount;
  }
  return count;
}

}  // namespace quilmark
