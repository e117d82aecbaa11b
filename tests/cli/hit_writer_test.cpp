#include "cli/hit_writer.h"

#include <gtest/gtest.h>

#include <string>

#include "support/scratch_folder.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

TEST(FormatHit, JsonShowsNullForWhatIsNotKnown) {
  const HitFormat format{.json = true, .drivePaths = true, .facts = true};
  EXPECT_EQ(FormatHit(u"C:\\a", true, format, {}),
            R"({"path":"C:\\a","dir":true,"size":null,"modified":null,"created":null})");
  EXPECT_EQ(
      FormatHit(u"C:\\a", false, format, {.size = 5, .modified = kFileTimeOfUnixEpoch}),
      R"({"path":"C:\\a","dir":false,"size":5,"modified":"1970-01-01T00:00:00.000Z","created":null})");
}

TEST(FormatHit, OtherFormsLeaveThemOut) {
  EXPECT_EQ(FormatHit(u"C:\\a", false, {.json = true, .drivePaths = true}, {.size = 5}),
            R"({"path":"C:\\a","dir":false})");
  EXPECT_EQ(FormatHit(u"C:\\a", false, {.drivePaths = true, .facts = true}, {.size = 5}), "C:\\a");
  const std::u16string_view odd = u"C:\\a\n\x1b[2J\x7f";
  EXPECT_EQ(FormatHit(odd, false, {.drivePaths = true, .isShown = true}), "C:\\a??[2J?");
  EXPECT_EQ(FormatHit(odd, false, {.drivePaths = true}), "C:\\a\n\x1b[2J\x7f");
}

// A stream whose bytes can be read back; it is gone with the test.
class HitStream : public testing::Test {
 protected:
  ~HitStream() override { std::fclose(stream); }
  std::string Written() const {
    std::string text(static_cast<size_t>(std::ftell(stream)), '\0');
    std::rewind(stream);
    EXPECT_EQ(std::fread(text.data(), 1, text.size(), stream), text.size());
    return text;
  }

  ScratchFolder folder;
  std::FILE* stream = std::fopen((folder.HostPath() / "hits").string().c_str(), "w+b");
};

TEST_F(HitStream, TakesATextAsItIs) {
  EXPECT_EQ(WriteText("3 hits\n", stream), WriteOutcome::kDone);
  EXPECT_EQ(Written(), "3 hits\n");
}

TEST_F(HitStream, TakesAsManyHitsAsAreAskedFor) {
  const auto volume = MakeTestVolume(u"Q:");
  ResultSet hits;
  for (const std::u16string_view name : {u"a", u"b", u"c"}) {
    hits.push_back({volume.get(), AddFile(*volume, name)});
  }
  EXPECT_EQ(WriteHits(hits, 2, {.drivePaths = true, .end = '\0'}, stream), WriteOutcome::kDone);
  EXPECT_EQ(Written(), std::string("Q:\\a\0Q:\\b\0", 10));
}

TEST_F(HitStream, TakesAllHitsWithoutALimit) {
  const auto volume = MakeTestVolume(u"Q:"), other = MakeTestVolume(u"R:");
  const ResultSet hits = {{volume.get(), AddFile(*volume, u"a")}, {other.get(), AddFile(*other, u"b")}};
  EXPECT_EQ(WriteHits(hits, std::nullopt, {.drivePaths = true}, stream), WriteOutcome::kDone);
  EXPECT_EQ(Written(), "Q:\\a\nR:\\b\n");
}

}  // namespace
}  // namespace quilmark
