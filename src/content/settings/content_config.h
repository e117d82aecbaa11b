// Which files a content search reads as archives, and what it reads of those.
#pragma once

#include <string>
#include <vector>

namespace quilmark {

// A value. As the list files say, with the built-in items behind what they lack.
struct ContentConfig {
  std::vector<std::u16string> zipExts;     // lower case, with a dot in front
  std::vector<std::string> innerPatterns;  // of entries, UTF-8, ASCII letters in lower case
};

// Reads both list files and puts what they say in force. A missing file is written with the built-in
// items; of one that cannot be read the items of the last time stay. Any thread; one at a time, the
// others wait for the disk.
void LoadContentConfig();

// What LoadContentConfig would put in force at a start, for a program beside the window: nothing is
// written, and nothing comes in force.
[[nodiscard]] ContentConfig ReadContentConfig();

// A copy of what is in force; empty before the first LoadContentConfig. Any thread; takes a leaf lock.
ContentConfig CurrentContentConfig();

}  // namespace quilmark
