#include "shell/search/row_icons.h"

#include <algorithm>
#include <utility>

#include "platform/text.h"

namespace quilmark {

namespace {

constexpr std::u16string_view kImageExtensions[] = {u".jpg",  u".jpeg", u".png", u".gif", u".bmp",
                                                    u".webp", u".ico",  u".svg", u".tif", u".psd"};

constexpr std::u16string_view kRootName = u".";  // of the record that stands for a drive itself

void PathInto(const RowText& row, std::u16string& path) {
  path.assign(row.folder);
  if (!path.empty() && path.back() != u'\\') path.push_back(u'\\');
  if (row.name != kRootName) path.append(row.name);
}

}  // namespace

int IconSizeOf(ViewMode view) {
  constexpr int kSizes[] = {16, 24, 48};
  return kSizes[static_cast<size_t>(view)];
}

bool HasImageExtension(std::u16string_view name) {
  const size_t dot = name.rfind(u'.');
  if (dot == std::u16string_view::npos) return false;
  const std::u16string_view extension = name.substr(dot);
  return std::any_of(std::begin(kImageExtensions), std::end(kImageExtensions),
                     [extension](std::u16string_view one) { return EqualNoCase(extension, one); });
}

RowIcon IconOfRow(IconCache& icons, const RowText& row, const RowIconWish& wish, std::u16string& path) {
  PathInto(row, path);
  if (row.isDirectory && !IsDriveRoot(path)) return {.icon = icons.FolderIcon(wish.size)};
  RowIcon shown;
  if (wish.view == ViewMode::kLargeIcons && !row.isDirectory && HasImageExtension(row.name)) {
    KnownThumbnail thumbnail = icons.ThumbnailOf(path, wish.size);
    if (thumbnail.icon != nullptr) return {.icon = std::move(thumbnail.icon)};
    shown.isPictureMissing = !thumbnail.isRefused && !row.isDeleted;
  }
  const IconRequest plain = {.path = path, .size = wish.size, .typeOnly = row.isDirectory};
  shown.icon = wish.isMoving ? icons.CachedIcon(plain) : icons.GetIcon(plain);
  return shown;
}

}  // namespace quilmark
