#include "search/attributes/attr_positions.h"

#include <gtest/gtest.h>

#include <span>
#include <string>
#include <vector>

namespace quilmark {
namespace {

TEST(AttrPositionBytes, ComeBackAsTheyWere) {
  const std::vector<AttrPosition> positions = {{.letter = u'C', .journalId = 1, .usn = 2},
                                               {.letter = u'N', .journalId = ~uint64_t{0}, .usn = -3}};
  const std::string bytes = AttrPositionBytes(positions);
  EXPECT_EQ(bytes.size(), 12u + 2 * 18);
  EXPECT_EQ(ReadAttrPositionBytes(std::as_bytes(std::span(bytes))), positions);
}

TEST(AttrPositionBytes, OfAnotherKindOrNotWholeAreNone) {
  const std::string bytes = AttrPositionBytes(std::vector<AttrPosition>{{.letter = u'C'}});
  for (size_t size = 0; size < bytes.size(); ++size) {
    EXPECT_FALSE(ReadAttrPositionBytes(std::as_bytes(std::span(bytes)).first(size)).has_value());
  }
  for (const size_t place : {size_t{0}, size_t{4}, size_t{8}}) {
    std::string other = bytes;
    ++other[place];
    EXPECT_FALSE(ReadAttrPositionBytes(std::as_bytes(std::span(other))).has_value());
  }
  const std::string longer = bytes + "x";
  EXPECT_FALSE(ReadAttrPositionBytes(std::as_bytes(std::span(longer))).has_value());
}

}  // namespace
}  // namespace quilmark
