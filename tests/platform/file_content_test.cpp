#include "platform/file_content.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/scratch_folder.h"
#include "support/system_faults.h"

namespace quilmark {
namespace {

std::string PatternOf(size_t size) {
  std::string bytes(size, '\0');
  for (size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 31 + i / 512);
  return bytes;
}

// All bytes of the open file, read `step` at a time; empty where a read fails.
std::optional<std::string> ReadAll(FileContent& content, size_t step) {
  std::string bytes;
  std::vector<char> buffer(step);
  for (;;) {
    const auto count = content.Read(buffer);
    if (!count) return std::nullopt;
    bytes.append(buffer.data(), *count);
    if (*count < step) return bytes;
  }
}

struct Copy {
  std::span<const char> view;
  std::string bytes;
};

TEST(FileContent, OfAnyLengthIsReadToItsLastByte) {
  const ScratchFolder folder;
  const auto content = MakeFileContent();
  for (const size_t size : {0u, 1u, 4'095u, 4'096u, 4'097u, 300'000u}) {
    SCOPED_TRACE(size);
    folder.MakeFile("a.bin", PatternOf(size));
    for (const size_t step : {1'000u, 4'096u, 1u << 20}) {
      ASSERT_EQ(content->Open(folder.PathOf(u"a.bin")), ContentOpening::kOpened);
      EXPECT_EQ(content->Size(), size);
      EXPECT_EQ(ReadAll(*content, step), PatternOf(size));
    }
  }
}

TEST(FileContent, IsSeenAsAWholeWhereTheSystemHasViews) {
  const ScratchFolder folder;
  folder.MakeFile("a.bin", PatternOf(70'000));
  const auto content = MakeFileContent();
  ASSERT_EQ(content->Open(folder.PathOf(u"a.bin")), ContentOpening::kOpened);
  const auto view = content->View();
  ASSERT_EQ(view.has_value(), content->HasViews());
  if (!view) return;
  Copy copy{.view = *view, .bytes = std::string(view->size(), '\0')};
  EXPECT_TRUE(content->Look(
      [](void* subject) {
        auto& seen = *static_cast<Copy*>(subject);
        std::copy(seen.view.begin(), seen.view.end(), seen.bytes.begin());
      },
      &copy));
  EXPECT_EQ(copy.bytes, PatternOf(70'000));
}

TEST(FileContent, OfNoBytesHasNoView) {
  const ScratchFolder folder;
  folder.MakeFile("empty");
  const auto content = MakeFileContent();
  ASSERT_EQ(content->Open(folder.PathOf(u"empty")), ContentOpening::kOpened);
  EXPECT_EQ(content->Size(), 0u);
  EXPECT_FALSE(content->View().has_value());
}

TEST(FileContent, OfWhatIsNoFileIsNotToBeHad) {
  const ScratchFolder folder;
  folder.MakeFolder("folder");
  const auto content = MakeFileContent();
  EXPECT_EQ(content->Open(folder.PathOf(u"none")), ContentOpening::kCannotOpen);
  if (content->Open(folder.PathOf(u"folder")) == ContentOpening::kOpened) {
    EXPECT_FALSE(content->Size().has_value());
    EXPECT_FALSE(ReadAll(*content, 100).has_value());
  }
}

TEST(FileContent, CanBeRemovedWhileItIsRead) {
  const ScratchFolder folder;
  folder.MakeFile("a.bin", PatternOf(5'000));
  const auto content = MakeFileContent();
  ASSERT_EQ(content->Open(folder.PathOf(u"a.bin")), ContentOpening::kOpened);
  EXPECT_TRUE(std::filesystem::remove(folder.HostPath() / "a.bin"));
  EXPECT_EQ(ReadAll(*content, 1'000), PatternOf(5'000));
}

TEST(FileContent, IsReadWholeOrNotAtAllWhateverCallFails) {
  const ScratchFolder folder;
  folder.MakeFile("a.bin", PatternOf(5'000));
  const int failed = FailEachCall(FaultKind::kOnce, [&](const auto& failing) {
    std::optional<std::string> read;
    bool isOpen = false;
    const bool hasFailed = failing([&] {
      const auto content = MakeFileContent();
      isOpen = content->Open(folder.PathOf(u"a.bin")) == ContentOpening::kOpened;
      if (isOpen) read = ReadAll(*content, 10'000);
    });
    EXPECT_TRUE(!read || *read == PatternOf(5'000));
    EXPECT_TRUE(hasFailed || read.has_value());
  });
  EXPECT_GE(failed, 2);
}

TEST(FileContent, LeavesNoFileOpenWhenItIsClosedOrEnds) {
  const ScratchFolder folder;
  folder.MakeFile("a.bin", PatternOf(5'000));
  const SystemFaults calls(FaultKind::kOnce);
  const auto content = MakeFileContent();
  ASSERT_EQ(content->Open(folder.PathOf(u"a.bin")), ContentOpening::kOpened);
  ASSERT_EQ(content->Open(folder.PathOf(u"a.bin")), ContentOpening::kOpened);
  EXPECT_EQ(calls.OpenFiles(), 1);
  content->Close();
  EXPECT_EQ(calls.OpenFiles(), 0);
  WarmFileContent(folder.PathOf(u"a.bin"), 1'000'000);
  EXPECT_EQ(calls.OpenFiles(), 0);
}

TEST(FileContent, IsWarmedNoFurtherThanAsked) {
  const ScratchFolder folder;
  folder.MakeFile("a.bin", PatternOf(1'000'000));
  const auto readsOf = [&](uint64_t most) {
    const SystemFaults calls(FaultKind::kOnce);
    WarmFileContent(folder.PathOf(u"a.bin"), most);
    const auto names = calls.Calls();
    return std::count_if(names.begin(), names.end(),
                         [](const std::string& name) { return name == "read" || name == "ReadFile"; });
  };
  EXPECT_LT(readsOf(200'000), readsOf(1'000'000));
  WarmFileContent(folder.PathOf(u"none"), 1'000);  // no effect
}

}  // namespace
}  // namespace quilmark
