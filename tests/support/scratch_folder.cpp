#include "support/scratch_folder.h"

#include <random>

#include "platform/files.h"

namespace quilmark {

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder() {
  std::random_device random;
  do {
    path_ = fs::temp_directory_path() / ("quilmark-test-" + std::to_string(random()));
  } while (!fs::create_directory(path_));
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::u16string ScratchFolder::Path() const {
  const std::u8string typed = path_.u8string();
  return PathFromHost(std::string_view(reinterpret_cast<const char*>(typed.data()), typed.size()));
}

std::u16string ScratchFolder::PathOf(std::u16string_view name) const {
  return Path() + u"\\" + std::u16string(name);
}

}  // namespace quilmark
