#include "search/results/content_candidates.h"

#include <gtest/gtest.h>

#include <mutex>

#include "support/gate.h"
#include "support/search_harness.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

using Paths = std::vector<std::u16string>;

struct ContentCandidates : testing::Test {
  ContentCandidates() { volume = AddVolume(Engine(), MakeTestVolume(u"C:")); }

  std::optional<Paths> Collect(std::vector<std::u16string> exts, const SearchScope& scope = {}) {
    const SearchJob job{.ticket = ticket, .text = {}, .scope = {}, .options = options};
    const ContentQuery query{.Active = true, .Groups = {{u"word"}}, .Exts = std::move(exts)};
    const auto candidates = CollectContentCandidates(job, query, scope);
    if (!candidates) return std::nullopt;
    Paths paths;
    for (const MatchItem& item : *candidates) paths.push_back(BuildPathLocked(*item.volume, item.index));
    return paths;
  }

  SearchHarness harness;
  VolumeIndex* volume = nullptr;
  Ticket ticket = SupersedeSearch();
  SearchOptions options;
};

TEST_F(ContentCandidates, AreFilesWhoseNameEndsWithOneOfTheExtensions) {
  for (const char16_t* const name :
       {u"a.txt", u"b.TXT", u"c.md", u"d.txt.bak", u"e", u"txt", u".txt", u"f.tx", u"g.txt2", u"h."}) {
    AddFile(*volume, name);
  }
  AddFolder(*volume, u"folder.txt");
  const uint32_t gone = AddFile(*volume, u"gone.txt");
  MarkDeleted(*volume, gone);
  EXPECT_EQ(Collect({u".txt"}), (Paths{u"C:\\a.txt", u"C:\\b.TXT", u"C:\\.txt"}));
  EXPECT_EQ(Collect({u".txt", u".md", u".bak"}),
            (Paths{u"C:\\a.txt", u"C:\\b.TXT", u"C:\\c.md", u"C:\\d.txt.bak", u"C:\\.txt"}));
  EXPECT_EQ(Collect({}), Paths{});
}

TEST_F(ContentCandidates, LieInTheVolumeOfTheScope) {
  AddFile(*volume, u"a.txt");
  VolumeIndex* const other = AddVolume(Engine(), MakeTestVolume(u"D:"));
  AddFile(*other, u"b.txt");
  EXPECT_EQ(Collect({u".txt"}), (Paths{u"C:\\a.txt", u"D:\\b.txt"}));
  EXPECT_EQ(Collect({u".txt"}, {.position = 1}), Paths{u"D:\\b.txt"});
}

TEST_F(ContentCandidates, LieBelowTheDesktopWhereThatIsTheScope) {
  const uint32_t desktop = AddFolder(*volume, u"Desktop");
  AddFile(*volume, u"in.txt", volume->records[desktop].frn);
  AddFile(*volume, u"out.txt");
  EXPECT_EQ(Collect({u".txt"}, {.desktopOnly = true, .desktop = u"C:\\Desktop"}),
            Paths{u"C:\\Desktop\\in.txt"});
}

TEST_F(ContentCandidates, LeaveOutAVolumeThatIsBusyOrLost) {
  AddFile(*volume, u"a.txt");
  volume->busy = true;
  EXPECT_EQ(Collect({u".txt"}), Paths{});
  volume->busy = false;
  volume->valid = false;
  EXPECT_EQ(Collect({u".txt"}), Paths{});
}

TEST_F(ContentCandidates, DoNotWaitForAWriter) {
  AddFile(*volume, u"a.txt");
  const Gate writer(volume->indexLock, Gate::Stops::kAll);
  EXPECT_EQ(Collect({u".txt"}), Paths{});
}

TEST_F(ContentCandidates, AreNoneOfAStaleSearch) {
  AddFile(*volume, u"a.txt");
  SupersedeSearch();
  EXPECT_EQ(Collect({u".txt"}), std::nullopt);
}

}  // namespace
}  // namespace quilmark
