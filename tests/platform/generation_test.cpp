#include "platform/generation.h"

#include <gtest/gtest.h>

#include "platform/shutdown.h"

namespace quilmark {
namespace {

TEST(Generation, MakesFormerTicketsStale) {
  Generation generation;
  const Ticket first = generation.Supersede();
  EXPECT_TRUE(first.IsCurrent());
  EXPECT_EQ(first.Number(), 1u);
  const Ticket second = generation.Supersede();
  EXPECT_FALSE(first.IsCurrent());
  EXPECT_TRUE(second.IsCurrent());
  EXPECT_EQ(generation.Number(), second.Number());
}

TEST(Generation, GivesTheLatestTicketWithoutMakingItStale) {
  Generation generation;
  const Ticket none = generation.Latest();
  EXPECT_EQ(none.Number(), 0u);
  EXPECT_TRUE(none.IsCurrent());
  const Ticket begun = generation.Supersede();
  EXPECT_FALSE(none.IsCurrent());
  EXPECT_EQ(generation.Latest().Number(), begun.Number());
  EXPECT_TRUE(begun.IsCurrent());
}

TEST(Generation, EndsWithTheProgram) {
  Generation generation;
  const Ticket ticket = generation.Supersede();
  const Ticket unlimited = Ticket::Unlimited();
  EXPECT_TRUE(unlimited.IsCurrent());
  ShutdownRequested = true;
  EXPECT_FALSE(ticket.IsCurrent());
  EXPECT_FALSE(unlimited.IsCurrent());
  ShutdownRequested = false;
  EXPECT_TRUE(ticket.IsCurrent());
}

TEST(Generation, KnowsItsOwnTicketsAlone) {
  Generation generation, other;
  const Ticket own = generation.Supersede(), foreign = other.Supersede();
  EXPECT_TRUE(generation.IsCurrent(own));
  EXPECT_FALSE(generation.IsCurrent(foreign)) << "with the same number";
  EXPECT_FALSE(generation.IsCurrent(Ticket::Unlimited()));
  EXPECT_FALSE(Ticket().IsCurrent()) << "of work that never began";
}

}  // namespace
}  // namespace quilmark
