#include "content/run/status_text.h"

#include "config/translate.h"
#include "platform/format.h"
#include "search/results/search_session.h"

namespace quilmark {

namespace {

constexpr size_t kMostUnits = 255;

// The English stands where no language has the text; the tables of languages have others.
std::u16string PatternOf(ContentStatus status) {
  switch (status) {
    case ContentStatus::kNoCandidates:
      return TranslateOr(u"Status_ContentSearchNoCandidates", u"No candidate files after filters.");
    case ContentStatus::kStart:
      return TranslateOr(u"Status_FilteredFilesStartScanFmt",
                         u"Filtered %zu files, scanning... (Esc to cancel)");
    case ContentStatus::kProgress:
      return TranslateOr(u"Status_ScanningProgressFmt", u"Scanning contents... (Processed %zu / %zu)");
  }
  return {};
}

}  // namespace

std::u16string ContentStatusText(ContentStatus status, uint64_t first, uint64_t second) {
  return FormatText(PatternOf(status), first, second).substr(0, kMostUnits);
}

void PostContentStatus(const Ticket& ticket, ContentStatus status, uint64_t first, uint64_t second) {
  PostText(TheSearch().hooks.window, WM_SEARCH_STATUS, ticket.Number(),
           ContentStatusText(status, first, second));
}

}  // namespace quilmark
