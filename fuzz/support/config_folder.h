// A configuration directory of this process.
#pragma once

#include <fstream>
#include <string_view>

#include "support/scratch.h"

namespace quilmark {

class ConfigFolder {
 public:
  ConfigFolder() { Require(setenv("QUILMARK_CONFIG_DIR", folder_.Path().c_str(), 1) == 0); }

  void Write(const char* name, std::string_view bytes) const {
    std::ofstream file(folder_.Path() / name, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    Require(file.good());
  }
  bool Has(const char* name) const { return std::filesystem::exists(folder_.Path() / name); }
  void Remove(const char* name) const { std::filesystem::remove(folder_.Path() / name); }

 private:
  ScratchFolder folder_;
};

}  // namespace quilmark
