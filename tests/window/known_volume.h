// Drive T: as an NTFS volume whose sizes and dates come from the attribute cache alone: there are no
// files behind its names that could be asked.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/file_reference.h"
#include "platform/files.h"
#include "search/attributes/attr_cache_file.h"
#include "support/ntfs_builder.h"
#include "window/results_list.h"

namespace quilmark {

class KnownVolume : public ListProgram {
 protected:
  static constexpr uint64_t kRoot = MakeReference(5, 1), kJournal = 77;
  using Entries = std::vector<std::pair<uint64_t, AttrEntry>>;

  KnownVolume() { builder_.Journal(kJournal, 0, {}); }

  uint64_t AddFolder(std::u16string_view name) {
    builder_.Folder(next_, kRoot, name);
    return MakeReference(next_++, 1);
  }
  uint64_t AddFile(std::u16string_view name, uint64_t parent = kRoot) {
    builder_.File(next_, parent, name);
    return MakeReference(next_++, 1);
  }
  static AttrEntry Known(int64_t size, FileTime modified, FileTime created) {
    return {.size = size, .modified = modified, .created = created, .valid = true};
  }
  static std::string CacheOf(const Entries& entries) {
    return AttrCacheBytes({{u'T', kJournal, entries}});
  }
  std::string CacheFile() const {
    return ReadFileBytes(program.Settings().PathOf(u"attrcache.v1.bin")).value_or("");
  }
  // What was added, and what the last run has known of it.
  void StartWith(const Entries& entries) {
    image_.MakeFile("volume.img", builder_.Image());
    program.Settings().MakeFile("attrcache.v1.bin", CacheOf(entries));
    program.StartAndWait();
  }

 private:
  NtfsVolumeBuilder builder_;
  uint64_t next_ = 64;
  ScratchFolder image_;
  ScopedEnvironment drives_{kDrivesVariable, "T=" + (image_.HostPath() / "volume.img").string() +
                                                 ";B=" + image_.HostPath().string() + "/none"};
};

}  // namespace quilmark
