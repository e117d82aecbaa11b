// What the file of the console program tells of itself.
#include <gtest/gtest.h>
#include <windows.h>

#include "platform/files.h"
#include "platform/win32/wide.h"

namespace quilmark {
namespace {

class ProgramFile : public testing::Test {
 protected:
  ~ProgramFile() override { FreeLibrary(module); }

  std::string ResourceOf(const wchar_t* type) const {
    const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(1), type);
    const HGLOBAL loaded = found != nullptr ? LoadResource(module, found) : nullptr;
    if (loaded == nullptr) return {};
    return {static_cast<const char*>(LockResource(loaded)), SizeofResource(module, found)};
  }

  const std::u16string path = PathFromHost(QUILMARK_PROGRAM);
  const HMODULE module = LoadLibraryExW(Wide(path), nullptr, LOAD_LIBRARY_AS_IMAGE_RESOURCE);
};

TEST_F(ProgramFile, HasAVersion) {
  const std::string version = ResourceOf(RT_VERSION);
  const std::u16string text = u"Quilmark in the console";
  const std::string bytes(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t));
  EXPECT_NE(version.find(bytes), std::string::npos);
}

TEST_F(ProgramFile, HasAManifestThatTakesLongPaths) {
  const std::string manifest = ResourceOf(RT_MANIFEST);
  EXPECT_NE(manifest.find("longPathAware"), std::string::npos);
  EXPECT_NE(manifest.find("asInvoker"), std::string::npos);
}

TEST_F(ProgramFile, HasItsSymbolsBesideIt) {
  EXPECT_TRUE(IsExistingPath(path + u".debug"));
  const std::optional<std::string> bytes = ReadFileBytes(path);
  ASSERT_TRUE(bytes.has_value());
  EXPECT_EQ(bytes->find(".debug_info"), std::string::npos);
}

}  // namespace
}  // namespace quilmark
