#include "shell/actions/deletion.h"

#include <gtest/gtest.h>

#include <map>

#include "shell/recording_shell.h"
#include "support/mapped_drive.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

using Calls = std::vector<std::string>;

bool Deletes(const std::u16string&) { return true; }

TEST(RecycleOrDelete, EndsWithTheFirstWayThatDoesIt) {
  RecordingShell shell;
  shell.operationDeletes = Deletes;
  EXPECT_TRUE(RecycleOrDelete(shell, u"C:\\a"));
  EXPECT_EQ(shell.calls, Calls{"operation with undo C:\\a"});

  shell = {};
  shell.oldCallDeletes = Deletes;
  EXPECT_TRUE(RecycleOrDelete(shell, u"C:\\a"));
  EXPECT_EQ(shell.calls, (Calls{"operation with undo C:\\a", "old call with undo C:\\a"}));
}

// What the Recycle Bin refuses is deleted all the same, and nobody is asked.
TEST(RecycleOrDelete, DeletesForGoodWhatTheRecycleBinRefuses) {
  RecordingShell shell;
  shell.directlyDeletes = Deletes;
  EXPECT_TRUE(RecycleOrDelete(shell, u"C:\\a"));
  EXPECT_EQ(shell.calls,
            (Calls{"operation with undo C:\\a", "old call with undo C:\\a", "directly C:\\a"}));
}

TEST(RecycleOrDelete, FailsWhereNoWayDoesIt) {
  RecordingShell shell;
  EXPECT_FALSE(RecycleOrDelete(shell, u"C:\\a"));
  EXPECT_EQ(shell.calls.size(), 3u);
}

TEST(DeletePermanently, IsTheSameWithoutTheRecycleBin) {
  RecordingShell shell;
  EXPECT_FALSE(DeletePermanently(shell, u"C:\\a"));
  EXPECT_EQ(shell.calls, (Calls{"operation C:\\a", "old call C:\\a", "directly C:\\a"}));
}

// The shell would take such a name for that of other files.
TEST(DeletePermanently, AsksTheShellForPlainNamesAlone) {
  for (const std::u16string path : {u"C:\\dir\\a*", u"C:\\dir\\a.", u"C:\\dir \\a", u"C:\\dir\\a?"}) {
    RecordingShell shell;
    shell.operationDeletes = shell.oldCallDeletes = shell.directlyDeletes = Deletes;
    EXPECT_TRUE(DeletePermanently(shell, path));
    EXPECT_TRUE(RecycleOrDelete(shell, path));
    ASSERT_EQ(shell.calls.size(), 2u);
    EXPECT_TRUE(shell.calls[0].starts_with("directly ") && shell.calls[1] == shell.calls[0]);
  }
}

TEST(DeletePermanently, LeavesLongPathsToTheWaysThatTakeThem) {
  const std::u16string longest = u"C:\\" + std::u16string(256, u'x');
  for (const std::u16string& path : {longest, longest + u"x"}) {
    RecordingShell shell;
    shell.directlyDeletes = Deletes;
    EXPECT_TRUE(DeletePermanently(shell, path));
    EXPECT_EQ(shell.calls.size(), path == longest ? 3u : 2u);
    EXPECT_TRUE(shell.calls.back().starts_with("directly "));
  }
}

TEST(DeletePermanently, TriesNothingWithARootOrAStream) {
  for (const std::u16string path : {u"C:\\", u"C:\\.", u"C:\\a:b", u"C:", u"", u"C:\\dir\\.."}) {
    RecordingShell shell;
    shell.operationDeletes = shell.oldCallDeletes = shell.directlyDeletes = Deletes;
    EXPECT_FALSE(DeletePermanently(shell, path));
    EXPECT_FALSE(RecycleOrDelete(shell, path));
    EXPECT_EQ(shell.calls, Calls{});
  }
}

TEST(DeleteAll, CountsWhatCouldNotBeDeleted) {
  RecordingShell shell;
  shell.oldCallDeletes = [](const std::u16string& path) { return path == u"C:\\b"; };
  const DeletionOutcome outcome = DeleteAll(shell, {u"C:\\a", u"C:\\b", u"C:\\c"}, Undo::kNo);
  EXPECT_EQ(outcome.failures, 2u);
  EXPECT_EQ(outcome.isDone, (std::vector{false, true, false}));
  EXPECT_EQ(shell.calls.size(), 8u);
}

TEST(DeleteAll, IsDoneWithWhatWentWithItsFolder) {
  const ScratchFolder folder;
  folder.MakeFile("Dir/stays.txt", "x");
  const MappedDrive drive(u'Q', folder.Path());
  RecordingShell shell;
  shell.operationDeletes = Deletes;  // or says so
  const DeletionOutcome outcome = DeleteAll(
      shell, {u"Q:\\Dir", u"Q:\\dir\\sub\\gone.txt", u"Q:\\Dir\\stays.txt", u"Q:\\dirs"}, Undo::kYes);
  EXPECT_EQ(outcome.failures, 0u);
  EXPECT_EQ(shell.calls, (Calls{"operation with undo Q:\\Dir", "operation with undo Q:\\Dir\\stays.txt",
                                "operation with undo Q:\\dirs"}));
}

// One entry, and what is asked of it.
struct OneEntry : EntryCalls {
  uint32_t AttributesOf(const std::u16string&) override { return attributes; }
  bool SetAttributes(const std::u16string& path, uint32_t wanted) override {
    calls.push_back((path == u"C:\\a" ? "set " : "set of " + ToUtf8(path) + " ") +
                    std::to_string(wanted));
    if (path == u"C:\\gone") return false;
    if (takesAttributes) attributes = wanted;
    return takesAttributes;
  }
  std::vector<std::u16string> OtherNamesOf(const std::u16string&) override { return others; }
  bool RemoveFolder(const std::u16string&) override { return Remove("folder"); }
  bool RemoveFile(const std::u16string&) override { return Remove("file"); }
  bool Remove(const char* what) {
    calls.push_back(std::string("remove ") + what);
    return isRemovable;
  }

  Calls calls;
  uint32_t attributes = 32;
  bool takesAttributes = true, isRemovable = true;
  std::vector<std::u16string> others;
};

TEST(DeleteEntry, RemovesAPlainFileAtOnce) {
  OneEntry entry;
  EXPECT_TRUE(DeleteEntry(entry, u"C:\\a"));
  EXPECT_EQ(entry.calls, Calls{"remove file"});
}

TEST(DeleteEntry, ClearsWhatKeepsItFromBeingDeleted) {
  const struct {
    uint32_t attributes;
    Calls calls;
  } cases[] = {
      {32 | 1, {"set 32", "remove file"}},
      {2 | 4, {"set 128", "remove file"}},
      {16 | 1 | 2, {"set 16", "remove folder"}},
      {16 | 0x400, {"remove folder"}},                        // a link to a folder
      {0x400 | 1 | 32, {"set 1056", "remove file"}},          // a link to a file
      {0x400000 | 16 | 4, {"set 4194320", "remove folder"}},  // in the cloud
  };
  for (const auto& [attributes, calls] : cases) {
    OneEntry entry;
    entry.attributes = attributes;
    EXPECT_TRUE(DeleteEntry(entry, u"C:\\a"));
    EXPECT_EQ(entry.calls, calls);
  }
}

TEST(DeleteEntry, GivesAttributesBackToWhatStays) {
  OneEntry entry;
  entry.attributes = 32 | 1 | 2;
  entry.isRemovable = false;
  EXPECT_FALSE(DeleteEntry(entry, u"C:\\a"));
  EXPECT_EQ(entry.calls, (Calls{"set 32", "remove file", "set 35"}));
  EXPECT_EQ(entry.attributes, 35u);
}

TEST(DeleteEntry, GivesAttributesBackToTheOtherNamesOfTheFile) {
  OneEntry entry;
  entry.attributes = 32 | 1;
  entry.others = {u"C:\\gone", u"C:\\b", u"C:\\c"};
  EXPECT_TRUE(DeleteEntry(entry, u"C:\\a"));
  EXPECT_EQ(entry.calls, (Calls{"set 32", "remove file", "set of " + std::string("C:\\gone") + " 33",
                                "set of " + std::string("C:\\b") + " 33"}))
      << "one name is enough, as they share them";
}

TEST(DeleteEntry, AsksForNoOtherNamesWhereNothingWasCleared) {
  for (const uint32_t attributes : {32u, 16u | 1u, 0x400u | 1u}) {
    OneEntry entry;
    entry.attributes = attributes;
    entry.others = {u"C:\\b"};
    EXPECT_TRUE(DeleteEntry(entry, u"C:\\a"));
    EXPECT_EQ(entry.attributes & 1, 0u);
    for (const std::string& call : entry.calls) EXPECT_EQ(call.find("set of"), std::string::npos);
  }
}

TEST(DeleteEntry, TriesAlsoWhereAttributesCannotBeSet) {
  OneEntry entry;
  entry.attributes = 16 | 1;
  entry.takesAttributes = entry.isRemovable = false;
  EXPECT_FALSE(DeleteEntry(entry, u"C:\\a"));
  EXPECT_EQ(entry.calls, (Calls{"set 16", "remove folder"}));
}

TEST(DeleteEntry, TouchesNothingThatIsNotThereOrNoFile) {
  OneEntry entry;
  EXPECT_FALSE(DeleteEntry(entry, u"C:\\"));
  EXPECT_FALSE(DeleteEntry(entry, u"C:\\a:stream"));
  entry.attributes = kNoAttributes;
  EXPECT_FALSE(DeleteEntry(entry, u"C:\\a"));
  EXPECT_EQ(entry.calls, Calls{});
}

}  // namespace
}  // namespace quilmark
