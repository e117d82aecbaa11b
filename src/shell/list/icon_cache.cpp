#include "shell/list/icon_cache.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace quilmark {

namespace {

constexpr int kUsualSize = 16, kLeastLarge = 28, kLeastOwnFolder = 21, kLeastThumbnail = 16;
constexpr size_t kMostRefused = 2'048;  // before those that do not count any more are dropped
constexpr uint32_t kManyGdiObjects = 7'200, kMostGdiObjects = 65'535;
constexpr size_t kIconsAfterTrim = 1'024;
constexpr size_t kLongestShellPath = 259;  // units

IconScale ScaleOf(int size) { return size < kLeastLarge ? IconScale::kSmall : IconScale::kLarge; }

// The shell takes no longer path where it tells icons by their type, and what it is of the path that
// says the type is its name. A drive without its backslash is a folder on that drive.
std::u16string TypePathOf(std::u16string_view path) {
  if (IsDriveRoot(path) && path.size() == 2) return std::u16string(path) + u"\\";
  return std::u16string(path.size() <= kLongestShellPath ? path : path.substr(path.rfind(u'\\') + 1));
}

// A shell that knows no pictures gives a pixel or two for any file.
bool IsPicture(const IconPicture& picture, int size) {
  const int side = std::max(picture.width, picture.height);
  return picture.icon != nullptr && (side >= size || side >= kLeastThumbnail);
}

}  // namespace

IconCache::IconCache(IconSource& source, uint64_t (*nowMs)()) : source_(source), nowMs_(nowMs) {
  noThumbnail_.reserve(kMostRefused);
}

void IconCache::Prepare() {
  source_.PrepareThread();
  IconRef small = source_.IconOfType(u"folder", IconType::kFolder, IconScale::kSmall);
  IconRef large = source_.IconOfType(u"folder", IconType::kFolder, IconScale::kLarge);
  const std::scoped_lock lock(lock_);
  smallFolder_.swap(small);
  largeFolder_.swap(large);
}

IconRef IconCache::FolderIcon(int size) const {
  const std::scoped_lock lock(lock_);
  return ScaleOf(size) == IconScale::kSmall ? smallFolder_ : largeFolder_;
}

IconRef IconCache::GetIcon(const IconRequest& request) {
  if (request.path.empty()) return request.typeOnly ? FolderIcon(kUsualSize) : nullptr;
  IconRequest asked = request;
  if (asked.size < 1) asked.size = kUsualSize;
  const bool isPlainFolder = asked.typeOnly && !asked.thumbnail && asked.size < kLeastOwnFolder;
  if (isPlainFolder && !IsDriveRoot(asked.path)) return FolderIcon(kUsualSize);
  const uint64_t key = IconKeyOf(asked);
  bool triesPicture = asked.thumbnail;
  {
    const std::scoped_lock lock(lock_);
    if (IconRef icon = icons_.Find(key)) return icon;
    if (asked.thumbnail && IsRefused(key)) {
      if (IconRef icon = icons_.Find(PlainKeyOf(key))) return icon;
      triesPicture = false;
    }
  }
  source_.PrepareThread();
  return Keep(asked, key, triesPicture, Load(asked, triesPicture));
}

IconCache::Loaded IconCache::Load(const IconRequest& request, bool triesPicture) {
  Loaded loaded;
  if (triesPicture) loaded = LoadPicture(request);
  if (loaded.icon == nullptr) loaded = {.icon = LoadIcon(request)};
  return loaded;
}

IconCache::Loaded IconCache::LoadPicture(const IconRequest& request) {
  const std::u16string path(request.path);
  const int size = std::max(request.size, kLeastThumbnail);
  if (!request.typeOnly) {
    for (const ShellPicture kind : {ShellPicture::kThumbnail, ShellPicture::kAny}) {
      IconPicture picture = source_.PictureOf(path, size, kind);
      if (!IsPicture(picture, size)) continue;
      return {.icon = std::move(picture.icon), .isThumbnail = kind == ShellPicture::kThumbnail};
    }
  }
  return {.icon = source_.DecodedPicture(path, request.size), .isThumbnail = true};
}

IconRef IconCache::LoadIcon(const IconRequest& request) {
  const IconScale scale = ScaleOf(request.size);
  const std::u16string path = TypePathOf(request.path);
  const IconType type = request.typeOnly ? IconType::kFolder : IconType::kFile;
  IconRef icon = source_.IconOfType(path, type, scale);
  if (icon != nullptr || scale == IconScale::kSmall) return icon;
  return source_.IconOfFile(std::u16string(request.path), scale);
}

IconRef IconCache::Keep(const IconRequest& request, uint64_t key, bool triedPicture,
                        const Loaded& loaded) {
  IconRef former;  // goes when the lock is given back
  const std::scoped_lock lock(lock_);
  const bool isRefused = triedPicture && !loaded.isThumbnail;
  if (isRefused && (loaded.icon != nullptr || !request.typeOnly)) Refuse(key);
  if (loaded.icon == nullptr) return nullptr;
  const uint64_t kept = request.thumbnail && !loaded.isThumbnail ? PlainKeyOf(key) : key;
  if (IconRef earlier = icons_.Find(kept)) return earlier;
  if (loaded.isThumbnail) noThumbnail_.erase(key);
  former = icons_.Insert(kept, loaded.icon);
  return loaded.icon;
}

IconRef IconCache::CachedIcon(const IconRequest& request) {
  const uint64_t key = IconKeyOf(request);
  const std::scoped_lock lock(lock_);
  return icons_.Find(key);
}

KnownThumbnail IconCache::ThumbnailOf(std::u16string_view path, int size) {
  const uint64_t key = IconKeyOf({.path = path, .size = size, .thumbnail = true});
  const std::scoped_lock lock(lock_);
  if (IconRef icon = icons_.Find(key)) return {.icon = std::move(icon)};
  return {.isRefused = noThumbnail_.contains(key)};
}

bool IconCache::IsRefused(uint64_t key) const {
  const auto refused = noThumbnail_.find(key);
  return refused != noThumbnail_.end() && nowMs_() - refused->second < kNoThumbnailMs;
}

void IconCache::Refuse(uint64_t key) {
  const uint64_t now = nowMs_();
  if (noThumbnail_.size() >= kMostRefused) {
    boost::unordered::erase_if(
        noThumbnail_, [now](const auto& refused) { return now - refused.second >= kNoThumbnailMs; });
  }
  noThumbnail_[key] = now;
}

void IconCache::Clear() {
  std::vector<IconRef> icons;  // go when the lock is given back
  IconRef small, large;
  const std::scoped_lock lock(lock_);
  icons = icons_.ShrinkTo(0);
  noThumbnail_.clear();
  small.swap(smallFolder_);
  large.swap(largeFolder_);
}

void IconCache::TrimGdiIfNeeded() {
  const uint32_t count = source_.CountGdiObjects();
  if (count < kManyGdiObjects || count > kMostGdiObjects) return;
  std::vector<IconRef> icons;  // go when the lock is given back
  const std::scoped_lock lock(lock_);
  icons = icons_.ShrinkTo(kIconsAfterTrim);
}

}  // namespace quilmark
