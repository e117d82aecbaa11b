#include "shell/actions/recent_opens.h"

namespace quilmark {

void RecordRecentOpen(const MatchItem&) {}

void ClearRecentOpens() {}

void RefreshRecentViewIfNeeded() {}

void UpdateRecentAfterRename(std::u16string_view, std::u16string_view) {}

}  // namespace quilmark
