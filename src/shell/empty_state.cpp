#include "shell/empty_state.h"

#include <shared_mutex>

#include "config/translate.h"
#include "platform/format.h"
#include "search/search_state.h"

namespace quilmark {

EmptyText EmptyListText(bool isAsked, uint64_t indexed) {
  const std::u16string detail =
      FormatText(TranslateOr(u"Empty_IndexedFmt", u"%llu files and folders indexed"), indexed);
  if (isAsked) return {TranslateOr(u"Empty_NoResults", u"Nothing found"), detail};
  return {TranslateOr(u"Empty_TypeToSearch", u"Type a part of a name; Enter lists everything"), detail};
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
