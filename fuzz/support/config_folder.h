// A configuration directory of this process; it goes with the process.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "support/fuzz_input.h"

namespace quilmark {

class ConfigFolder {
 public:
  ConfigFolder() {
    std::string path = (ParentFolder() / "quilmark-fuzz-XXXXXX").string();
    Require(mkdtemp(path.data()) != nullptr);
    path_ = path;
    Require(setenv("QUILMARK_CONFIG_DIR", path.c_str(), 1) == 0);
  }
  ~ConfigFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ConfigFolder(const ConfigFolder&) = delete;
  ConfigFolder& operator=(const ConfigFolder&) = delete;

  void Write(const char* name, std::string_view bytes) const {
    std::ofstream file(path_ / name, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    Require(file.good());
  }
  bool Has(const char* name) const { return std::filesystem::exists(path_ / name); }
  void Remove(const char* name) const { std::filesystem::remove(path_ / name); }

 private:
  // In memory where the system has such a folder: every input writes files.
  static std::filesystem::path ParentFolder() {
    const std::filesystem::path inMemory = "/dev/shm";
    return std::filesystem::is_directory(inMemory) ? inMemory : std::filesystem::temp_directory_path();
  }

  std::filesystem::path path_;
};

}  // namespace quilmark
