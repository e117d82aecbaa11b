// What became of one file of a content search.
#pragma once

#include <cstdint>

namespace quilmark {

// All but kHit are misses; they are told apart for the log and the console alone.
enum class FileMatch : uint8_t {
  kMiss,
  kHit,
  kStale,        // given up: the search has been superseded, or the program ends
  kCannotOpen,   // no such file, no rights, or held by another program
  kCannotRead,   // a read or a mapping failed
  kTooLarge,     // above contentMaxFileSizeMB
  kPlaceholder,  // its content would have to be fetched first
  kNetwork,      // a path of two backslashes
  kNoArchive,    // an extension of archives, and no archive
};

}  // namespace quilmark
