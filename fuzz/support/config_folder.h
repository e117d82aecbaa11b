// A configuration directory of this process, in the temporary folder; it goes with the process.
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
    std::string path = (std::filesystem::temp_directory_path() / "quilmark-fuzz-XXXXXX").string();
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
  std::filesystem::path path_;
};

}  // namespace quilmark
