#include "search/results/search_session.h"

#include <utility>

namespace quilmark {

SearchSession& TheSearch() {
  // Never destroyed: detached threads may look at it until the process is gone.
  static auto* const session = new SearchSession;
  return *session;
}

Ticket SupersedeSearch() { return TheSearch().CurrentResults.Supersede(); }

void PostResults(const Ticket& ticket, ResultKind kind) {
  PostIfAlive(TheSearch().hooks.window, WM_SEARCH_RESULTS, ticket.Number(), static_cast<int64_t>(kind));
}

bool PublishResults(const Ticket& ticket, ResultKind kind, std::shared_ptr<const ResultSet> rows,
                    KeepSort keepSort, SetOrder order) {
  const bool isPublished = TheSearch().CurrentResults.Publish(ticket, [&](SearchResults& held) {
    held.rows = std::move(rows);
    held.order = order;
    if (keepSort == KeepSort::kNo) held.SortColumn = -1;
  });
  if (isPublished) PostResults(ticket, kind);
  return isPublished;
}

ChosenSort CurrentSort() {
  return TheSearch().CurrentResults.Read([](const SearchResults& held) {
    return ChosenSort{held.SortColumn, held.SortAscending};
  });
}

std::shared_ptr<const ResultSet> HeldResults() {
  return TheSearch().CurrentResults.Read([](const SearchResults& held) { return held.rows; });
}

std::shared_ptr<const ResultSet> ShownResults() {
  auto filtered = TheSearch().FilteredResults.Read([](const FilteredRows& shown) { return shown.rows; });
  return filtered != nullptr ? filtered : HeldResults();
}

uint64_t DisplayCount() {
  return TheSearch().FilteredResults.Read([](const FilteredRows& shown) { return shown.DisplayCount; });
}

void FollowNewResults(KeepFiltered keep, uint64_t resultCount) {
  TheSearch().FilteredResults.SupersedeIf([keep, resultCount](FilteredRows& shown) {
    if (keep == KeepFiltered::kIfThere && shown.rows != nullptr) {
      shown.DisplayCount = shown.rows->size();
      return false;
    }
    shown = {.rows = {}, .source = {}, .FilteredKey = {}, .DisplayCount = resultCount};
    return true;  // a job over the former results drops what it finds
  });
}

}  // namespace quilmark
