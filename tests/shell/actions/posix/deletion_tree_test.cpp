// Deletions over made-up trees: what was not chosen is still there, to the byte.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <span>

#include "platform/utf.h"
#include "shell/actions/deletion.h"
#include "shell/actions/shell_paths.h"
#include "shell/host_shell.h"
#include "support/mapped_drive.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

namespace fs = std::filesystem;

std::string BytesOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

// What stands at a path: the target of a link, the bytes of a file, nothing more of a folder.
std::string StateOf(const fs::path& path) {
  const auto status = fs::symlink_status(path);
  if (fs::is_symlink(status)) return "link " + fs::read_symlink(path).string();
  if (fs::is_directory(status)) return "folder";
  return fs::exists(status) ? "file " + BytesOf(path) : "gone";
}

// A tree below Q:, with all that makes deleting hard.
class DeletionOfATree : public testing::TestWithParam<uint32_t> {
 protected:
  DeletionOfATree() {
    fs::create_directory(root_ / "top");
    folders_.push_back(root_ / "top");
    for (int i = 0; i < 40; ++i) Grow();
    for (const auto& entry : fs::recursive_directory_iterator(folder_.HostPath())) {
      before_[entry.path()] = StateOf(entry.path());
    }
  }

  uint32_t Random(size_t below) { return random_() % static_cast<uint32_t>(below); }

  // Names that wildcards and the taking off of dots would confuse.
  void Grow() {
    static constexpr const char* kNames[] = {"a", "a.", "a ", "ab", "a*", "a?", "b", "b.", "*",
                                             "c", "C",  "d",  "e",  "f",  "g<", "h", "i:j"};
    const fs::path parent = folders_[Random(folders_.size())];
    const fs::path path = parent / kNames[Random(std::size(kNames))];
    if (StateOf(path) != "gone") return;
    switch (Random(5)) {
      case 0:
        fs::create_directory(path);
        folders_.push_back(path);
        break;
      case 1:  // to a file or folder, in the tree or out of it, or to nothing
        fs::create_symlink(LinkTarget(), path);
        break;
      default:
        std::ofstream(path) << "bytes of " << path.string();
        break;
    }
    if (Random(4) == 0) shell_.attributes[path] = Random(8);
    if (Random(8) == 0) shell_.open.insert(path);
    all_.push_back(path);
  }

  fs::path LinkTarget() {
    const fs::path targets[] = {folders_[Random(folders_.size())], outside_, outside_ / "kept.txt",
                                all_.empty() ? outside_ : all_[Random(all_.size())], root_ / "nothing"};
    return targets[Random(std::size(targets))];
  }

  std::u16string ChosenPath(const fs::path& path) {
    std::u16string chosen = u"Q:\\" + FromUtf8(path.lexically_relative(root_).string());
    std::replace(chosen.begin(), chosen.end(), u'/', u'\\');
    return chosen;
  }

  static bool IsAtOrBelow(const fs::path& path, const fs::path& folder) {
    return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first == folder.end();
  }

  // The first two ways are for plain names; each follows where the one before did not do.
  void ExpectOrderOfTries(const std::u16string& path, std::span<const std::string> calls) {
    std::vector<std::string> ways;
    for (const std::string& call : calls) ways.push_back(call.substr(0, call.find(' ')));
    const std::vector<std::string> all = {"operation", "old", "directly"};
    const bool isPlain = IsDeletablePath(path) && IsPlainPath(path);
    const std::vector<std::string> wanted(all.begin() + (isPlain ? 0 : 2), all.end());
    ASSERT_LE(ways.size(), wanted.size());
    EXPECT_TRUE(std::equal(ways.begin(), ways.end(), wanted.begin()));
  }

  ScratchFolder folder_;
  const fs::path root_ = MakeRoot(), outside_ = MakeOutside();
  MappedDrive drive_{u'Q', folder_.PathOf(u"root")};
  std::mt19937 random_{GetParam()};
  HostShell shell_{GetParam()};
  std::vector<fs::path> folders_, all_;
  std::map<fs::path, std::string> before_;

 private:
  fs::path MakeRoot() {
    folder_.MakeFolder("root");
    return folder_.HostPath() / "root";
  }
  fs::path MakeOutside() {
    folder_.MakeFile("outside/kept.txt", "kept");
    folder_.MakeFile("outside/deep/er.txt", "kept too");
    return folder_.HostPath() / "outside";
  }
};

TEST_P(DeletionOfATree, LeavesWhatWasNotChosen) {
  const Undo undo = Random(2) == 0 ? Undo::kYes : Undo::kNo;
  std::vector<fs::path> chosen;
  for (const fs::path& path : all_) {
    if (Random(3) == 0) chosen.push_back(path);
  }
  std::vector<std::u16string> paths;
  for (const fs::path& path : chosen) paths.push_back(ChosenPath(path));
  // Some have vanished since they were chosen.
  std::set<fs::path> vanished;
  for (const fs::path& path : chosen) {
    if (Random(8) == 0 && StateOf(path) != "folder" && fs::remove(path)) vanished.insert(path);
  }
  const auto attributes = shell_.attributes;

  const DeletionOutcome outcome = DeleteAll(shell_, paths, undo);

  ASSERT_EQ(outcome.isDone.size(), paths.size());
  EXPECT_EQ(outcome.failures,
            static_cast<size_t>(std::count(outcome.isDone.begin(), outcome.isDone.end(), false)));
  for (const auto& entry : before_) {
    const auto& [path, state] = entry;
    const bool isChosen = std::any_of(chosen.begin(), chosen.end(), [&](const fs::path& each) {
      return IsAtOrBelow(entry.first, each);
    });
    if (!isChosen) EXPECT_EQ(StateOf(path), state) << path;
    // A link is whole or gone, and what it leads to was judged at its own place.
    if (isChosen && StateOf(path) != "gone") EXPECT_EQ(StateOf(path), state) << path;
  }
  for (size_t i = 0; i < chosen.size(); ++i) {
    if (outcome.isDone[i] && !shell_.lies.contains(chosen[i])) {
      EXPECT_EQ(StateOf(chosen[i]), "gone") << chosen[i];
    }
    if (shell_.open.contains(chosen[i]) && !vanished.contains(chosen[i])) {
      EXPECT_EQ(StateOf(chosen[i]), before_[chosen[i]]) << "somebody has it open";
    }
  }
  // What stays has the attributes that it had.
  for (const auto& [path, bits] : attributes) {
    if (StateOf(path) != "gone") EXPECT_EQ(shell_.attributes[path], bits) << path;
  }
}

TEST_P(DeletionOfATree, TriesTheWaysInTheirOrder) {
  for (const fs::path& path : all_) {
    const std::u16string chosen = ChosenPath(path);
    shell_.calls.clear();
    const bool isDone = RecycleOrDelete(shell_, chosen);
    ExpectOrderOfTries(chosen, shell_.calls);
    const bool reachedLast = !shell_.calls.empty() && shell_.calls.back().starts_with("directly");
    if (IsDeletablePath(chosen) && !isDone) EXPECT_TRUE(reachedLast) << path;
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, DeletionOfATree, testing::Range(0u, 300u));

}  // namespace
}  // namespace quilmark
