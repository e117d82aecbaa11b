// A folder of this process for what a target writes; it goes with the process.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

#include "support/fuzz_input.h"

namespace quilmark {

class ScratchFolder {
 public:
  ScratchFolder() {
    std::string path = (ParentFolder() / "quilmark-fuzz-XXXXXX").string();
    Require(mkdtemp(path.data()) != nullptr);
    path_ = path;
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const std::filesystem::path& Path() const { return path_; }

 private:
  // In memory where the system has such a folder: every input writes files.
  static std::filesystem::path ParentFolder() {
    const std::filesystem::path inMemory = "/dev/shm";
    return std::filesystem::is_directory(inMemory) ? inMemory : std::filesystem::temp_directory_path();
  }

  std::filesystem::path path_;
};

}  // namespace quilmark
