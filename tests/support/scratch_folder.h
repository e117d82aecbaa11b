// An empty folder of its own for a test, removed with all it holds.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace quilmark {

class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  // The folder as the host writes it.
  const std::filesystem::path& HostPath() const { return path_; }

  // The folder, or a file below it, as a path of platform/files.h.
  std::u16string Path() const;
  std::u16string PathOf(std::u16string_view name) const;

  // Makes a file with these contents, or a folder, and the folders above it. Throws where that fails.
  void MakeFile(const std::filesystem::path& name, std::string_view bytes = {}) const;
  void MakeFolder(const std::filesystem::path& name) const;

 private:
  std::filesystem::path path_;
};

// As a program is told it on its command line.
std::string Utf8(const std::filesystem::path& path);

}  // namespace quilmark
