#include "shell/list/icon_key.h"

namespace quilmark {

namespace {

constexpr uint64_t kHashStart = 0x14650fb0739d0383, kHashPrime = 0x100000001b3;
constexpr uint64_t kTypeOnlyBit = 0x8000000000000000, kThumbnailBit = 0x4000000000000000;
constexpr int kUsualSize = 16, kSizeShift = 48;

constexpr char16_t FoldLatin(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
}

uint64_t HashOf(std::u16string_view path) {
  uint64_t hash = kHashStart;
  for (const char16_t unit : path) {
    const char16_t folded = FoldLatin(unit);
    hash = (hash ^ (folded & 0xFF)) * kHashPrime;
    hash = (hash ^ (folded >> 8)) * kHashPrime;
  }
  return hash;
}

}  // namespace

uint64_t IconKeyOf(const IconRequest& request) {
  const auto size = static_cast<uint64_t>(request.size < 1 ? kUsualSize : request.size);
  uint64_t key = HashOf(request.path) ^ (size << kSizeShift);
  if (request.typeOnly) key ^= kTypeOnlyBit;
  if (request.thumbnail) key ^= kThumbnailBit;
  return key;
}

uint64_t PlainKeyOf(uint64_t key) { return key ^ kThumbnailBit; }

bool IsDriveRoot(std::u16string_view path) {
  if (path.size() < 2 || path.size() > 3 || path[1] != u':') return false;
  const char16_t letter = FoldLatin(path[0]);
  if (letter < u'a' || letter > u'z') return false;
  return path.size() == 2 || path[2] == u'\\' || path[2] == u'/';
}

}  // namespace quilmark
