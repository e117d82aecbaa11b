// Random changes beside searches, sorts, filters and reads of attributes. Run under ThreadSanitizer as
// well.
#include "search/churn.h"

namespace quilmark {
namespace {

TEST(ChurnConcurrency, ChangesBesideAllThatReadsLeaveTheIndexAsTheModel) {
  ChurnUnderSearches churn;
  churn.Run({.changes = 20'000, .wholeEvery = 10'000, .pullEvery = 5'000, .wrapEvery = 7'000});
}

}  // namespace
}  // namespace quilmark
