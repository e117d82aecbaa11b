// Archives that are damaged, or made to do damage.
#pragma once

#include <string>
#include <vector>

namespace quilmark {

struct HostileArchive {
  std::string name;
  std::string bytes;
};

// An archive as an office program leaves it. Holds "needle" in word/document.xml.
std::string OfficeArchive();

// 200 and more.
std::vector<HostileArchive> HostileArchives();

}  // namespace quilmark
