#include "support/scratch_folder.h"

#include <fstream>
#include <random>

#include "platform/files.h"

namespace quilmark {

namespace fs = std::filesystem;

#ifdef _WIN32

// The form in which the standard library takes a path of any length.
static fs::path LongForm(const fs::path& path) {
  return L"\\\\?\\" + fs::path(path).make_preferred().native();
}

// The library's own remove_all loses its way beyond 260 characters, whatever the form.
static void RemoveTree(const fs::path& path) {
  std::error_code ignored;
  if (fs::remove(path, ignored)) return;
  FolderListing listing;
  if (!ListFolder(path.u16string(), listing)) return;
  for (const FolderEntry& entry : listing.entries) RemoveTree(path / listing.NameOf(entry));
  fs::remove(path, ignored);
}

#else

static fs::path LongForm(const fs::path& path) { return path; }

static void RemoveTree(const fs::path& path) {
  std::error_code ignored;
  fs::remove_all(path, ignored);
}

#endif

ScratchFolder::ScratchFolder() {
  std::random_device random;
  do {
    path_ = fs::temp_directory_path() / ("quilmark-test-" + std::to_string(random()));
  } while (!fs::create_directory(path_));
}

ScratchFolder::~ScratchFolder() { RemoveTree(LongForm(path_)); }

std::u16string ScratchFolder::Path() const { return PathFromHost(Utf8(path_)); }

std::u16string ScratchFolder::PathOf(std::u16string_view name) const {
  return Path() + u"\\" + std::u16string(name);
}

void ScratchFolder::MakeFile(const fs::path& name, std::string_view bytes) const {
  const fs::path file = LongForm(path_ / name);
  fs::create_directories(file.parent_path());
  std::ofstream stream(file, std::ios::binary);
  stream.exceptions(std::ios::failbit | std::ios::badbit);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

void ScratchFolder::MakeFolder(const fs::path& name) const {
  fs::create_directories(LongForm(path_ / name));
}

std::string Utf8(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace quilmark
