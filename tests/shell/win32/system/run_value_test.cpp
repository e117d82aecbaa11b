#include "shell/win32/system/run_value.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace quilmark {
namespace {

constexpr wchar_t kKey[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Run";

void Set(DWORD type, const void* data, DWORD bytes) {
  ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, kKey, L"Quilmark", type, data, bytes), 0);
}

struct RunValue : testing::Test {
  ~RunValue() override { RegDeleteKeyValueW(HKEY_CURRENT_USER, kKey, L"Quilmark"); }
};

TEST_F(RunValue, IsATextThatIsNotEmpty) {
  EXPECT_FALSE(HasRunKeyValue());
  for (const DWORD type : {DWORD{REG_SZ}, DWORD{REG_EXPAND_SZ}}) {
    Set(type, L"%X%", sizeof L"%X%");
    EXPECT_TRUE(HasRunKeyValue()) << type;
    Set(type, L"", sizeof L"");
    EXPECT_FALSE(HasRunKeyValue()) << type;
  }
  const DWORD number = 1;
  Set(REG_DWORD, &number, sizeof number);
  EXPECT_FALSE(HasRunKeyValue());
}

TEST_F(RunValue, MayBeDeletedTwice) {
  Set(REG_SZ, L"x", sizeof L"x");
  EXPECT_EQ(DeleteRunKeyValue(), 0u);
  EXPECT_FALSE(HasRunKeyValue());
  EXPECT_EQ(DeleteRunKeyValue(), 0u);
}

}  // namespace
}  // namespace quilmark
