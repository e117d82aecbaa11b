#include "platform/published.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <vector>

#include "platform/shutdown.h"

namespace quilmark {
namespace {

struct Rows {
  std::shared_ptr<const std::vector<int>> rows;
  int order = 0;
};

Rows MakeRows(std::vector<int> rows, int order) {
  return {std::make_shared<const std::vector<int>>(std::move(rows)), order};
}

TEST(Published, TakesTheValueOfTheLatestWorkAlone) {
  Published<Rows> results("results");
  const Ticket stale = results.Supersede();
  const Ticket latest = results.Supersede();
  EXPECT_FALSE(results.Publish(stale, MakeRows({1}, 1)));
  EXPECT_EQ(results.Get().rows, nullptr);
  EXPECT_TRUE(results.Publish(latest, MakeRows({1, 2}, 2)));
  EXPECT_EQ(results.Get().rows->size(), 2u);
  EXPECT_EQ(results.Get().order, 2);
  EXPECT_TRUE(results.Publish(latest, MakeRows({3}, 3))) << "as often as it likes";
  EXPECT_EQ(results.Get().order, 3);
}

TEST(Published, TakesNothingAtTheEndOfTheProgram) {
  Published<Rows> results("results");
  const Ticket ticket = results.Supersede();
  ShutdownRequested = true;
  EXPECT_FALSE(results.Publish(ticket, MakeRows({1}, 1)));
  EXPECT_FALSE(results.Publish(ticket, [](Rows& value) { value.order = 1; }));
  ShutdownRequested = false;
  EXPECT_EQ(results.Get().order, 0);
}

TEST(Published, EditsAPartOfTheValue) {
  Published<Rows> results("results", MakeRows({1, 2, 3}, 1));
  const Ticket ticket = results.Supersede();
  EXPECT_TRUE(results.Publish(ticket, [](Rows& value) { value.order = 2; }));
  EXPECT_EQ(results.Get().rows->size(), 3u);
  EXPECT_EQ(results.Read([](const Rows& value) { return value.order; }), 2);
  EXPECT_EQ(results.Number(), ticket.Number()) << "the work goes on";
  results.Change([](Rows& value) { value.order = 3; });
  EXPECT_EQ(results.Get().order, 3);
  EXPECT_TRUE(ticket.IsCurrent());
}

TEST(Published, KeepsItsValueWhereAnEditThrows) {
  Published<Rows> results("results", MakeRows({1}, 1));
  const auto edit = [](Rows& value) {
    value.order = 2;
    throw std::runtime_error("half way");
  };
  EXPECT_THROW(results.Change(edit), std::runtime_error);
  EXPECT_EQ(results.Get().order, 1);
  EXPECT_EQ(results.Get().rows->size(), 1u);
}

TEST(Published, SupersedesAndEditsInOneStep) {
  Published<Rows> results("results", MakeRows({1}, 1));
  const Ticket former = results.Supersede();
  const Ticket next = results.Supersede([](Rows& value) { value = {}; });
  EXPECT_FALSE(former.IsCurrent());
  EXPECT_TRUE(next.IsCurrent());
  EXPECT_EQ(results.Latest().Number(), next.Number());
  EXPECT_EQ(results.Get().rows, nullptr);
}

TEST(Published, TakesNothingOfOtherWork) {
  Published<Rows> results("results");
  Generation other;
  results.Supersede();
  EXPECT_FALSE(results.Publish(other.Supersede(), MakeRows({1}, 1)));
  EXPECT_FALSE(results.Publish(Ticket::Unlimited(), [](Rows& value) { value.order = 1; }));
  EXPECT_EQ(results.Get().order, 0);
}

TEST(Published, SupersedesWhereTheEditSaysSo) {
  Published<Rows> results("results");
  const Ticket ticket = results.Supersede();
  results.SupersedeIf([](Rows& value) {
    value.order = 4;
    return false;
  });
  EXPECT_TRUE(ticket.IsCurrent());
  EXPECT_EQ(results.Get().order, 4);
  results.SupersedeIf([](Rows& value) {
    value.order = 5;
    return true;
  });
  EXPECT_FALSE(ticket.IsCurrent());
  EXPECT_EQ(results.Get().order, 5);
}

// Takes the lock of what holds it when it dies, as a debug build would end the program for if it died
// under it.
struct Looker {
  Published<std::shared_ptr<Looker>>* home;
  int* seen;
  ~Looker() { *seen += home->Get() == nullptr ? 1 : 100; }
};

TEST(Published, LetsAFormerValueDieOutsideItsLock) {
  Published<std::shared_ptr<Looker>> home("home");
  int seen = 0;
  const auto fill = [&] {
    home.Change([&](auto& value) { value = std::shared_ptr<Looker>(new Looker{&home, &seen}); });
  };
  fill();
  home.Change([](auto& value) { value.reset(); });
  EXPECT_EQ(seen, 1);
  fill();
  EXPECT_TRUE(home.Publish(home.Supersede(), nullptr));
  EXPECT_EQ(seen, 2);
  fill();
  EXPECT_TRUE(home.Supersede([](auto& value) { value = nullptr; }).IsCurrent());
  EXPECT_EQ(seen, 3);
}

}  // namespace
}  // namespace quilmark
