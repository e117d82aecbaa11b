#include "content/run/tree_search.h"

#include <gmock/gmock.h>

#include <mutex>

#include "platform/utf.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

struct TreeSearchTest : testing::Test {
  // Names below the folder, with "/" between them.
  std::vector<std::string> Search(size_t threads = 2, std::vector<std::u16string> exts = {},
                                  std::vector<std::u16string> roots = {}) {
    TreeQuery query;
    query.roots = roots.empty() ? std::vector<std::u16string>{folder.Path()} : std::move(roots);
    query.exts = std::move(exts);
    query.plan.Groups = MakeContentGroups({{u"word"}});
    query.plan.makeContent = [] { return MakeFileContent(LinksOfFiles::kRefused); };
    query.threads = threads;
    query.ticket = ticket;
    std::vector<std::string> hits;
    std::mutex mutex;
    query.onHit = [&](std::u16string_view path) {
      const std::scoped_lock lock(mutex);
      std::string name = ToHostBytes(path.substr(folder.Path().size() + 1));
      std::replace(name.begin(), name.end(), '\\', '/');
      hits.push_back(name);
      return hits.size() < mostHits;
    };
    search = StartTreeSearch(std::move(query));
    EXPECT_TRUE(WaitForTreeSearch(*search, 60'000));
    return hits;
  }
  uint64_t CountOf(FileMatch match) const {
    return FiguresOf(*search).outcomes[static_cast<size_t>(match)];
  }

  ScratchFolder folder;
  Ticket ticket = Ticket::Unlimited();
  size_t mostHits = SIZE_MAX;
  std::shared_ptr<TreeSearch> search;
};

TEST_F(TreeSearchTest, FindsFilesAtEveryDepthWithAnyNumberOfThreads) {
  folder.MakeFile("a.txt", "a word");
  folder.MakeFile("b.txt", "nothing");
  folder.MakeFile("one/two/three/c.txt", "word");
  folder.MakeFile("one/d", "word");
  folder.MakeFolder("empty/folder");
  for (const size_t threads : {1u, 2u, 8u}) {
    EXPECT_THAT(Search(threads), UnorderedElementsAre("a.txt", "one/two/three/c.txt", "one/d"));
    EXPECT_EQ(FiguresOf(*search).files, 4u);
    EXPECT_EQ(FiguresOf(*search).unlistedFolders, 0u);
  }
}

TEST_F(TreeSearchTest, FindsEveryFileOfALargeFolderOnce) {
  for (int i = 0; i < 500; ++i) folder.MakeFile(std::to_string(i) + ".txt", "word");
  EXPECT_EQ(Search(4).size(), 500u);
  EXPECT_EQ(CountOf(FileMatch::kHit), 500u);
}

TEST_F(TreeSearchTest, LooksIntoFilesWithTheExtensionsAlone) {
  for (const char* const name : {"a.txt", "b.TXT", "c.md", "d", "e.txt.bak"})
    folder.MakeFile(name, "word");
  EXPECT_THAT(Search(2, {u".txt"}), UnorderedElementsAre("a.txt", "b.TXT"));
  EXPECT_EQ(FiguresOf(*search).files, 2u);
}

TEST_F(TreeSearchTest, ARootMayBeAFile) {
  folder.MakeFile("a.txt", "word");
  folder.MakeFile("b.txt", "word");
  EXPECT_THAT(Search(2, {}, {folder.PathOf(u"b.txt")}), ElementsAre("b.txt"));
}

TEST_F(TreeSearchTest, ARootThatIsNotThereCannotBeOpened) {
  EXPECT_TRUE(Search(2, {}, {folder.PathOf(u"none")}).empty());
  EXPECT_EQ(CountOf(FileMatch::kCannotOpen), 1u);
}

TEST_F(TreeSearchTest, EndsWhereNobodyWantsMoreHits) {
  for (int i = 0; i < 300; ++i) folder.MakeFile(std::to_string(i) + ".txt", "word");
  mostHits = 1;
  EXPECT_THAT(Search(1), testing::SizeIs(1));
  EXPECT_EQ(FiguresOf(*search).files, 1u);
}

TEST_F(TreeSearchTest, AStaleSearchLooksAtNothing) {
  folder.MakeFile("a.txt", "word");
  ticket = Ticket();
  EXPECT_TRUE(Search().empty());
  EXPECT_EQ(FiguresOf(*search).files, 0u);
}

}  // namespace
}  // namespace quilmark
