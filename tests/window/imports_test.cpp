#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>

namespace quilmark {
namespace {

struct Imports {
  std::set<std::string> libraries;  // lower-case
  WORD characteristics = 0;
  WORD subsystemVersion = 0;  // its first number
};

// Of a program beside this one.
Imports ImportsOf(const std::wstring& name) {
  wchar_t self[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, self, MAX_PATH);
  const auto path = std::filesystem::path(self).parent_path() / name;
  const HMODULE module = LoadLibraryExW(path.wstring().c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
  Imports imports;
  if (module == nullptr) return imports;
  const auto* const base = reinterpret_cast<const BYTE*>(module);
  const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  const auto& header = reinterpret_cast<const IMAGE_NT_HEADERS64*>(base + dos->e_lfanew)->OptionalHeader;
  imports.characteristics = header.DllCharacteristics;
  imports.subsystemVersion = header.MajorSubsystemVersion;
  const DWORD table = header.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
  for (const auto* row = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + table); row->Name != 0;
       ++row) {
    std::string library = reinterpret_cast<const char*>(base + row->Name);
    std::transform(library.begin(), library.end(), library.begin(),
                   [](char c) { return static_cast<char>(std::tolower(c)); });
    imports.libraries.insert(library);
  }
  FreeLibrary(module);
  return imports;
}

// Windows maps these from its own folder whatever lies beside the program (KnownDLLs), but for the
// common controls, which come from the side-by-side store. No socket among them.
TEST(Imports, AreLibrariesThatNobodyCanSlipIn) {
  const std::set<std::string> known = {"advapi32.dll", "comctl32.dll", "gdi32.dll",   "kernel32.dll",
                                       "msvcrt.dll",   "ole32.dll",    "shell32.dll", "user32.dll"};
  const Imports imports = ImportsOf(L"Quilmark.exe");
  EXPECT_FALSE(imports.libraries.empty());
  for (const std::string& library : imports.libraries) EXPECT_EQ(known.count(library), 1u) << library;
}

TEST(Imports, ComeWithThePlacesOfTheProgramAtRandomAndDataThatDoesNotRun) {
  const WORD wanted = IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE | IMAGE_DLLCHARACTERISTICS_NX_COMPAT |
                      0x0020;  // HIGH_ENTROPY_VA
  EXPECT_EQ(ImportsOf(L"Quilmark.exe").characteristics & wanted, wanted);
}

// A program of an older subsystem is told frames of another width than its windows have.
TEST(Imports, AreOfAProgramOfTheSystemsOwnSubsystem) {
  EXPECT_EQ(ImportsOf(L"Quilmark.exe").subsystemVersion, 10);
}

}  // namespace
}  // namespace quilmark
