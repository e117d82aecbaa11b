// Archives that are damaged, or made to do damage.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/zip_builder.h"

namespace quilmark {

struct HostileArchive {
  std::string name;
  std::string bytes;
};

// An archive as an office program leaves it. Holds "needle" in word/document.xml.
std::string OfficeArchive();

// Entries of a directory that all have the bytes of the first one, each with one more of what follows.
std::vector<ZipEntry> StretchedEntries(uint32_t count);

// 200 and more.
std::vector<HostileArchive> HostileArchives();

}  // namespace quilmark
