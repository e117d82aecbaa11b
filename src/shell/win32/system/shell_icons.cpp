#include "shell/win32/system/shell_icons.h"

#include <windows.h>

#include <shellapi.h>
#include <shobjidl.h>

#include <memory>
#include <utility>

#include "platform/win32/wide.h"
#include "shell/win32/gdi/gdi_icon.h"
#include "shell/win32/system/com.h"
#include "shell/win32/system/com_thread.h"
#include "shell/win32/system/image_decoder.h"

namespace quilmark {

namespace {

IconRef InfoIcon(const std::u16string& path, DWORD attributes, UINT flags, IconScale scale) {
  SHFILEINFOW info = {};
  const UINT size = scale == IconScale::kSmall ? SHGFI_SMALLICON : SHGFI_LARGEICON;
  const DWORD_PTR found =
      SHGetFileInfoW(Wide(path), attributes, &info, sizeof info, SHGFI_ICON | size | flags);
  UniqueIcon icon(info.hIcon);
  return found != 0 && icon ? std::make_shared<const GdiIcon>(std::move(icon)) : nullptr;
}

UniqueBitmap ShellBitmap(const std::u16string& path, int size, SIIGBF flags) {
  IShellItem* found = nullptr;
  const HRESULT parsed =
      SHCreateItemFromParsingName(Wide(path), nullptr, IID_IShellItem, reinterpret_cast<void**>(&found));
  const UniqueCom<IShellItem> item = TakeCom(parsed, found);
  if (!item) return {};
  IShellItemImageFactory* asked = nullptr;
  const HRESULT queried =
      item.Get()->QueryInterface(IID_IShellItemImageFactory, reinterpret_cast<void**>(&asked));
  const UniqueCom<IShellItemImageFactory> factory = TakeCom(queried, asked);
  if (!factory) return {};
  HBITMAP bitmap = nullptr;
  const HRESULT given = factory.Get()->GetImage({size, size}, flags, &bitmap);
  UniqueBitmap owned(bitmap);
  return SUCCEEDED(given) ? std::move(owned) : UniqueBitmap();
}

struct ShellIcons final : IconSource {
  void PrepareThread() override { UseComOnThisThread(); }

  IconPicture PictureOf(const std::u16string& path, int size, ShellPicture kind) override {
    const bool isThumbnail = kind == ShellPicture::kThumbnail;
    const int flags = SIIGBF_BIGGERSIZEOK | (isThumbnail ? SIIGBF_THUMBNAILONLY : 0);
    UniqueBitmap bitmap = ShellBitmap(path, size, static_cast<SIIGBF>(flags));
    return bitmap ? IconOfBitmap(ShrinkBitmap(std::move(bitmap), size)) : IconPicture();
  }

  IconRef DecodedPicture(const std::u16string& path, int size) override {
    const UniqueBitmap bitmap = DecodePicture(path, size);
    return bitmap ? IconOfBitmap(bitmap).icon : nullptr;
  }

  IconRef IconOfType(const std::u16string& path, IconType type, IconScale scale) override {
    const DWORD attributes =
        type == IconType::kFolder ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_NORMAL;
    return InfoIcon(path, attributes, SHGFI_USEFILEATTRIBUTES, scale);
  }

  IconRef IconOfFile(const std::u16string& path, IconScale scale) override {
    return InfoIcon(path, 0, 0, scale);
  }

  uint32_t CountGdiObjects() override { return GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS); }
};

}  // namespace

IconSource& TheShellIcons() {
  static IconSource& icons = *new ShellIcons;
  return icons;
}

}  // namespace quilmark
