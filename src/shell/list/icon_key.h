// What icons are asked for, and by which numbers they are kept.
#pragma once

#include <cstdint>
#include <string_view>

namespace quilmark {

// An icon that somebody wants.
struct IconRequest {
  std::u16string_view path;  // read during the call alone
  int size = 16;             // pixels of a side; below 1 counts as 16
  bool typeOnly = false;     // of a folder, by its type
  bool thumbnail = false;    // the content of the file as a picture, where it has one
};

// The number of a request, whatever the case of the letters A to Z. Two paths may have the same one, and
// share an icon then.
uint64_t IconKeyOf(const IconRequest& request);

// The number of the request that wants the same without its thumbnail; `key` is that of a thumbnail.
uint64_t PlainKeyOf(uint64_t key);

// A letter and a colon, with at most one slash or backslash behind them.
bool IsDriveRoot(std::u16string_view path);

}  // namespace quilmark
