#include "shell/win32/system/image_decoder.h"

#include <wincodec.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "platform/win32/file_handle.h"
#include "platform/win32/wide.h"
#include "shell/win32/gdi/gdi_icon.h"
#include "shell/win32/system/com.h"

namespace quilmark {

namespace {

constexpr int kBytesPerPixel = 4;

using Factory = UniqueCom<IWICImagingFactory>;
using Source = UniqueCom<IWICBitmapSource>;

Factory MakeFactory() {
  IWICImagingFactory* factory = nullptr;
  const HRESULT result = CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                          IID_IWICImagingFactory, reinterpret_cast<void**>(&factory));
  return TakeCom(result, factory);
}

// The same object as what it is derived from.
template <typename Interface>
Source AsSource(UniqueCom<Interface> picture) {
  return Source(picture.Release());
}

// Content that a provider of the cloud or an archive has to bring first.
bool IsElsewhere(const wchar_t* path) {
  constexpr DWORD kRecallOnOpen = 0x0004'0000, kRecallOnDataAccess = 0x0040'0000;
  const DWORD attributes = GetFileAttributesW(path);
  return attributes == INVALID_FILE_ATTRIBUTES ||
         (attributes & (FILE_ATTRIBUTE_OFFLINE | kRecallOnOpen | kRecallOnDataAccess)) != 0;
}

Source FirstPictureOf(IWICImagingFactory& factory, const wchar_t* path) {
  IWICBitmapDecoder* opened = nullptr;
  const HRESULT result = factory.CreateDecoderFromFilename(path, nullptr, GENERIC_READ,
                                                           WICDecodeMetadataCacheOnDemand, &opened);
  const UniqueCom<IWICBitmapDecoder> decoder = TakeCom(result, opened);
  if (!decoder) return {};
  IWICBitmapFrameDecode* frame = nullptr;
  const HRESULT found = decoder.Get()->GetFrame(0, &frame);
  return AsSource(TakeCom(found, frame));
}

Source Converted(IWICImagingFactory& factory, IWICBitmapSource& picture) {
  for (const GUID& format : {GUID_WICPixelFormat32bppPBGRA, GUID_WICPixelFormat32bppBGRA}) {
    IWICFormatConverter* made = nullptr;
    const HRESULT result = factory.CreateFormatConverter(&made);
    UniqueCom<IWICFormatConverter> converter = TakeCom(result, made);
    if (!converter) return {};
    if (SUCCEEDED(converter.Get()->Initialize(&picture, format, WICBitmapDitherTypeNone, nullptr, 0,
                                              WICBitmapPaletteTypeCustom))) {
      return AsSource(std::move(converter));
    }
  }
  return {};
}

std::optional<PictureSize> SizeOf(IWICBitmapSource& picture) {
  constexpr UINT kMost = std::numeric_limits<int>::max();
  UINT width = 0, height = 0;
  if (FAILED(picture.GetSize(&width, &height))) return std::nullopt;
  if (width < 1 || height < 1 || width > kMost || height > kMost) return std::nullopt;
  return PictureSize{static_cast<int>(width), static_cast<int>(height)};
}

Source Scaled(IWICImagingFactory& factory, IWICBitmapSource& picture, const PictureSize& size) {
  IWICBitmapScaler* made = nullptr;
  const HRESULT result = factory.CreateBitmapScaler(&made);
  UniqueCom<IWICBitmapScaler> scaler = TakeCom(result, made);
  if (!scaler) return {};
  const HRESULT scaled =
      scaler.Get()->Initialize(&picture, static_cast<UINT>(size.width), static_cast<UINT>(size.height),
                               WICBitmapInterpolationModeFant);
  return SUCCEEDED(scaled) ? AsSource(std::move(scaler)) : Source();
}

// Rows from the top down, clear at first.
struct PixelRows {
  UniqueBitmap bitmap;
  std::byte* pixels = nullptr;  // of the bitmap, and as long as it lives
};

PixelRows MakeRows(const PictureSize& size) {
  BITMAPINFO info = {};
  info.bmiHeader = {.biSize = sizeof info.bmiHeader,
                    .biWidth = size.width,
                    .biHeight = -size.height,
                    .biPlanes = 1,
                    .biBitCount = 8 * kBytesPerPixel,
                    .biCompression = BI_RGB};
  void* pixels = nullptr;
  UniqueBitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0));
  return {std::move(bitmap), static_cast<std::byte*>(pixels)};
}

// The picture, which is not larger than the box, in the middle of it.
UniqueBitmap DrawnInto(const PictureSize& box, IWICBitmapSource& picture, const PictureSize& size) {
  PixelRows rows = MakeRows(box);
  if (!rows.bitmap) return {};
  const int stride = box.width * kBytesPerPixel;
  const int first =
      (box.height - size.height) / 2 * stride + (box.width - size.width) / 2 * kBytesPerPixel;
  const HRESULT copied = picture.CopyPixels(nullptr, static_cast<UINT>(stride),
                                            static_cast<UINT>(stride * box.height - first),
                                            reinterpret_cast<BYTE*>(rows.pixels + first));
  return SUCCEEDED(copied) ? std::move(rows.bitmap) : UniqueBitmap();
}

// Shrunk into a box with sides of `side` pixels, and as large as that box or as itself.
enum class Around : uint8_t { kBox, kNothing };
UniqueBitmap Shrunk(IWICImagingFactory& factory, IWICBitmapSource& picture, int side, Around around) {
  Source source = Converted(factory, picture);
  const auto size = source ? SizeOf(*source.Get()) : std::nullopt;
  if (!size) return {};
  const PictureSize wanted = ShrunkInto(*size, side);
  if (wanted != *size) source = Scaled(factory, *source.Get(), wanted);
  if (!source) return {};
  return DrawnInto(around == Around::kBox ? PictureSize{side, side} : wanted, *source.Get(), wanted);
}

std::optional<PictureSize> SizeOf(HBITMAP bitmap) {
  BITMAP facts = {};
  if (GetObjectW(bitmap, sizeof facts, &facts) == 0) return std::nullopt;
  if (facts.bmWidth < 1 || facts.bmHeight < 1) return std::nullopt;
  return PictureSize{facts.bmWidth, facts.bmHeight};
}

}  // namespace

UniqueBitmap DecodePicture(const std::u16string& path, int size) {
  const std::u16string longPath = LongPathOf(path);
  if (IsElsewhere(Wide(longPath))) return {};
  const Factory factory = MakeFactory();
  if (!factory) return {};
  const Source picture = FirstPictureOf(*factory.Get(), Wide(longPath));
  return picture ? Shrunk(*factory.Get(), *picture.Get(), size, Around::kBox) : UniqueBitmap();
}

UniqueBitmap ShrinkBitmap(UniqueBitmap bitmap, int size) {
  const auto former = SizeOf(bitmap.Get());
  if (!former || ShrunkInto(*former, size) == *former) return bitmap;
  const Factory factory = MakeFactory();
  if (!factory) return bitmap;
  IWICBitmap* made = nullptr;
  const HRESULT result = factory.Get()->CreateBitmapFromHBITMAP(bitmap.Get(), nullptr,
                                                                WICBitmapUsePremultipliedAlpha, &made);
  const UniqueCom<IWICBitmap> picture = TakeCom(result, made);
  if (!picture) return bitmap;
  UniqueBitmap shrunk = Shrunk(*factory.Get(), *picture.Get(), size, Around::kNothing);
  return shrunk ? std::move(shrunk) : std::move(bitmap);
}

IconPicture IconOfBitmap(const UniqueBitmap& bitmap) {
  const auto size = SizeOf(bitmap.Get());
  if (!size) return {};
  // One bit a pixel, rows of whole words; nothing of it is clear, unless the colours say so.
  const auto rowBytes = static_cast<size_t>((size->width + 15) / 16 * 2);
  const std::vector<std::byte> bits(rowBytes * static_cast<size_t>(size->height));
  const UniqueBitmap mask(CreateBitmap(size->width, size->height, 1, 1, bits.data()));
  ICONINFO info = {.fIcon = TRUE, .hbmMask = mask.Get(), .hbmColor = bitmap.Get()};
  UniqueIcon icon(CreateIconIndirect(&info));
  if (!icon) return {};
  return {.icon = std::make_shared<const GdiIcon>(std::move(icon), size->width, size->height),
          .width = size->width,
          .height = size->height};
}

}  // namespace quilmark
