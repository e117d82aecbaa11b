// NTFS volumes as ntfs-3g shows them, for comparison. Mounting takes root and /dev/fuse.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/utf.h"
#include "support/run_program.h"

namespace quilmark {

inline void RunTool(const std::string& program, const std::vector<std::string>& arguments) {
  const ProgramRun run = RunProgram(program, arguments);
  if (run.exitCode != 0) throw std::runtime_error(program + ": " + run.output + run.errors);
}

// An image mounted at an empty folder; unmounting writes everything to it.
class NtfsMount {
 public:
  // `options` beside those that every mount has; may be empty.
  NtfsMount(const std::filesystem::path& image, const std::filesystem::path& root,
            const std::string& options)
      : root_(root) {
    std::filesystem::create_directory(root);
    RunTool("/usr/bin/ntfs-3g",
            {"-o", "streams_interface=windows" + options, image.string(), root.string()});
    isMounted_ = true;
  }
  ~NtfsMount() {
    if (isMounted_) RunProgram("/bin/umount", {root_.string()});
  }
  NtfsMount(const NtfsMount&) = delete;
  NtfsMount& operator=(const NtfsMount&) = delete;

  void Unmount() {
    RunTool("/bin/umount", {root_.string()});
    isMounted_ = false;
  }
  const std::filesystem::path& Root() const { return root_; }

  // The place below the mount as a path of drive N:.
  std::u16string DrivePathOf(const std::filesystem::path& path) const {
    std::u16string result = u"N:";
    for (const auto& part : path.lexically_relative(root_)) {
      result += u'\\';
      result += FromUtf8(part.native());
    }
    return result;
  }

 private:
  std::filesystem::path root_;
  bool isMounted_ = false;
};

}  // namespace quilmark
