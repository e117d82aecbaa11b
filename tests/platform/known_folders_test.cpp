#include "platform/known_folders.h"

#include <gtest/gtest.h>

#include "platform/files.h"
#include "support/environment.h"

namespace quilmark {
namespace {

constexpr const char* kVariable = "QUILMARK_TEST_VARIABLE";

TEST(KnownFolders, TheTemporaryFolderStandsAndEndsWithASeparator) {
  const std::optional<std::u16string> folder = TempFolder();
  ASSERT_TRUE(folder.has_value());
  EXPECT_TRUE(folder->ends_with(u'\\'));
  EXPECT_TRUE(IsExistingFolder(*folder));
}

TEST(KnownFolders, AnEnvironmentVariableIsReadAtEachCall) {
  const ScopedEnvironment first(kVariable, "one");
  EXPECT_EQ(EnvironmentText(kVariable), u"one");
  const ScopedEnvironment second(kVariable, std::string(1'000, 'x'));
  EXPECT_EQ(EnvironmentText(kVariable), std::u16string(1'000, u'x'));
}

TEST(KnownFolders, AVariableThatIsNotSetIsNone) {
  const ScopedEnvironment none(kVariable, std::nullopt);
  EXPECT_EQ(EnvironmentText(kVariable), std::nullopt);
}

}  // namespace
}  // namespace quilmark
