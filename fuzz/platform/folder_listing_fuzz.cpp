// Any names of files and folders in one folder: each is listed once, with the bytes that it has and the
// kind that it is, and every path that is made of one leads to it.
#include <filesystem>
#include <fstream>
#include <map>

#include "platform/files.h"
#include "platform/posix/host_path.h"
#include "platform/utf.h"
#include "support/fuzz_input.h"
#include "support/scratch.h"

using namespace quilmark;

namespace {

constexpr size_t kMostNames = 16;

bool MakeEntry(const std::filesystem::path& path, bool isFolder) {
  if (isFolder) return std::filesystem::create_directory(path);
  return std::ofstream(path).good();
}

// By name; a name that no file system takes is left out. A trailing "/" asks for a folder.
std::map<std::u16string, bool> MakeEntries(const std::filesystem::path& folder, FuzzInput input) {
  std::map<std::u16string, bool> made;
  while (!input.rest.empty() && made.size() < kMostNames) {
    std::string name = input.TakeLine();
    const bool isFolder = name.ends_with('/');
    if (isFolder) name.pop_back();
    const bool isName = !name.empty() && name != "." && name != ".." && name.size() <= 255 &&
                        name.find('/') == name.npos && name.find('\0') == name.npos;
    if (!isName || made.contains(FromHostBytes(name))) continue;
    Require(MakeEntry(folder / name, isFolder));
    made[FromHostBytes(name)] = isFolder;
  }
  return made;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const ScratchFolder scratch;
  const std::filesystem::path host = scratch.Path() / "listed";
  std::filesystem::remove_all(host);
  std::filesystem::create_directory(host);
  auto expected = MakeEntries(host, InputOf(data, size));

  const std::u16string folder = PathOfHostBytes(host.string());
  FolderListing listing;
  Require(ListFolder(folder, listing));
  for (const FolderEntry& entry : listing.entries) {
    const std::u16string name(listing.NameOf(entry));
    const auto found = expected.find(name);
    Require(found != expected.end() && found->second == entry.isDirectory);
    Require(IsExistingPath(folder + u"\\" + name));
    Require(IsExistingFolder(folder + u"\\" + name) == entry.isDirectory);
    expected.erase(found);
  }
  Require(expected.empty());
  return 0;
}
