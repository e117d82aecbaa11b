// A million random changes: after each thousand the index says what a plain model says.
#include "search/churn.h"

namespace quilmark {
namespace {

TEST(Churn, AMillionChangesLeaveTheIndexAsTheModel) {
  ChurnUnderSearches churn;
  churn.Run({.changes = 1'000'000, .wholeEvery = 50'000, .pullEvery = 100'000, .wrapEvery = 130'000});
}

}  // namespace
}  // namespace quilmark
